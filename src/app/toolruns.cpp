#include "toolruns.h"

#include "exposure/calculationcontroller.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QQuickWindow>
#include <QTimer>

#include <atomic>
#include <cstdio>
#include <memory>

namespace kestrum {

void tapAfter(QQuickWindow& window, QPointF point, int delayMs)
{
    QTimer::singleShot(delayMs, &window, [&window, point] {
        const QPointF global = window.mapToGlobal(point);
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons held =
                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(type, point, point, global, Qt::LeftButton, held, Qt::NoModifier,
                              QPointingDevice::primaryPointingDevice());
            QCoreApplication::sendEvent(&window, &event);
        }
    });
}

void takeScreenshot(QQuickWindow& window, const QString& path, int delayMs)
{
    QTimer::singleShot(delayMs, &window, [&window, path] {
        const bool saved = window.grabWindow().save(path);
        if (!saved)
            qWarning("could not save a screenshot to %s", qPrintable(path));
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

// A frame shows the reading when the reading was applied before the scene was
// synchronised for it.
void quitAfterFirstReading(QQuickWindow& window, const CalculationController& meter,
                           const QElapsedTimer& sinceStart)
{
    auto readingSynced = std::make_shared<std::atomic_bool>(false);
    QObject::connect(
        &window, &QQuickWindow::beforeSynchronizing, &window,
        [readingSynced, &meter] {
            if (meter.appliedOutcomes() > 0)
                readingSynced->store(true);
        },
        Qt::DirectConnection);
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [readingSynced, &sinceStart] {
            if (!readingSynced->exchange(false))
                return;
            const qint64 elapsedMs = sinceStart.elapsed();
            QMetaObject::invokeMethod(QCoreApplication::instance(), [elapsedMs] {
                std::printf("first reading after %lld ms\n", static_cast<long long>(elapsedMs));
                std::fflush(stdout);
                QCoreApplication::exit(0);
            });
        },
        Qt::DirectConnection);
}

} // namespace kestrum
