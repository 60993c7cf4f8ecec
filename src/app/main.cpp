#include "app/appshell.h"
#include "app/dependencycontainer.h"
#include "app/linuxadapterfactory.h"
#include "app/qmlservices.h"
#include "exposure/calculationcontroller.h"
#include "platform/desktop/dbusappinstance.h"
#include "settings/translationcatalogue.h"

#include <QCommandLineParser>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>

#include <atomic>
#include <cstdio>

namespace {

constexpr int kScreenshotDelayMs = 800; // lets the first readings arrive and settle

QQuickWindow* firstWindow(const QQmlApplicationEngine& engine)
{
    const auto roots = engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.first());
}

// Saves a picture of the first window and quits: a way to look at the screens on a
// machine without a display (QT_QPA_PLATFORM=offscreen).
void takeScreenshot(QQmlApplicationEngine& engine, const QString& path)
{
    QTimer::singleShot(kScreenshotDelayMs, &engine, [&engine, path] {
        QQuickWindow* window = firstWindow(engine);
        const bool saved = window && window->grabWindow().save(path);
        if (!saved)
            qWarning("could not save a screenshot to %s", qPrintable(path));
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

// Quits once a frame showing the meter's first computed reading is on screen, printing
// "first reading after N ms" (since the application object was made): the start-up
// benchmark's finish line. A frame shows the reading when the reading was applied before
// the scene was synchronised for it.
void quitAfterFirstReading(QQuickWindow& window, const kestrum::CalculationController& meter,
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

} // namespace

int main(int argc, char* argv[])
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Kestrum"));
    QGuiApplication::setApplicationVersion(QStringLiteral(KESTRUM_VERSION));
    // Wayland compositors and phone shells match the window to the desktop entry by this.
    QGuiApplication::setDesktopFileName(QStringLiteral(KESTRUM_APP_ID));
    QQuickStyle::setStyle(QStringLiteral("Material"));
    kestrum::installTranslationCatalogue(app);

    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addVersionOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture of the window and quit."),
                                        QStringLiteral("file.png"));
    const QCommandLineOption firstReading(
        QStringLiteral("quit-after-first-reading"),
        QStringLiteral("Quit once the first reading is shown, printing how long it took."));
    // What a launcher's quick action passes (see QuickAction::toArguments).
    QCommandLineOption quickAction(QStringLiteral("quick-action"), QString(),
                                   QStringLiteral("type"));
    QCommandLineOption quickActionInfo(QStringLiteral("quick-action-info"), QString(),
                                       QStringLiteral("key=value"));
    quickAction.setFlags(QCommandLineOption::HiddenFromHelp);
    quickActionInfo.setFlags(QCommandLineOption::HiddenFromHelp);
    arguments.addOptions({screenshot, firstReading, quickAction, quickActionInfo});
    arguments.process(app);

    // A start from the launcher or a quick action goes to the running instance, if any.
    // Screenshot and benchmark runs are tools of their own and always run.
    kestrum::DBusAppInstance instance(QDBusConnection::sessionBus(),
                                      QStringLiteral(KESTRUM_APP_ID));
    const bool toolRun = arguments.isSet(screenshot) || arguments.isSet(firstReading);
    if (!toolRun && !instance.becomePrimary()) {
        if (instance.handOver(app.arguments()))
            return 0;
        qWarning("the running Kestrum did not answer; starting another");
    }

    auto& container = kestrum::DependencyContainer::shared();
    kestrum::LinuxAdapterFactory adapters;
    int status = 0;
    {
        kestrum::AppShell shell(adapters, container);
        // The QML singletons outlive the engine; they are made once the container is full.
        std::unique_ptr<kestrum::QmlServices> qmlServices;
        QQmlApplicationEngine engine;
        QObject::connect(
            &engine, &QQmlApplicationEngine::objectCreationFailed, &app,
            [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
        shell.start(kestrum::StartupOptions::fromEnvironment(app.arguments()), [&] {
            qmlServices = kestrum::registerQmlServices(container);
            engine.load(QUrl(QStringLiteral("qrc:/Kestrum/Main.qml")));
            return firstWindow(engine);
        });
        QObject::connect(&instance, &kestrum::AppInstance::handedOver, &shell,
                         &kestrum::AppShell::takeHandOver);
        if (arguments.isSet(screenshot))
            takeScreenshot(engine, arguments.value(screenshot));
        if (QQuickWindow* window = firstWindow(engine); window && arguments.isSet(firstReading))
            quitAfterFirstReading(*window, container.calculationController(), sinceStart);
        status = QGuiApplication::exec();
    }
    container.clear(); // while the application object still exists
    return status;
}
