#include "app/appstartup.h"
#include "app/dependencycontainer.h"
#include "app/qmlservices.h"
#include "settings/translationcatalogue.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>

namespace {

constexpr int kScreenshotDelayMs = 800; // lets the first readings arrive and settle

// Saves a picture of the first window and quits: a way to look at the screens on a
// machine without a display (QT_QPA_PLATFORM=offscreen).
void takeScreenshot(QQmlApplicationEngine& engine, const QString& path)
{
    QTimer::singleShot(kScreenshotDelayMs, &engine, [&engine, path] {
        const auto roots = engine.rootObjects();
        auto* window = roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.first());
        const bool saved = window && window->grabWindow().save(path);
        if (!saved)
            qWarning("could not save a screenshot to %s", qPrintable(path));
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Kestrum"));
    QGuiApplication::setApplicationVersion(QStringLiteral(KESTRUM_VERSION));
    QQuickStyle::setStyle(QStringLiteral("Material"));
    kestrum::installTranslationCatalogue(app);

    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addVersionOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture of the window and quit."),
                                        QStringLiteral("file.png"));
    arguments.addOption(screenshot);
    arguments.process(app);

    auto& container = kestrum::DependencyContainer::shared();
    kestrum::fillDependencies(container, kestrum::StartupOptions::fromEnvironment(app.arguments()));

    int status = 0;
    {
        const auto qmlServices = kestrum::registerQmlServices(container);
        QQmlApplicationEngine engine;
        QObject::connect(
            &engine, &QQmlApplicationEngine::objectCreationFailed, &app,
            [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
        engine.load(QUrl(QStringLiteral("qrc:/Kestrum/Main.qml")));
        if (arguments.isSet(screenshot))
            takeScreenshot(engine, arguments.value(screenshot));
        status = QGuiApplication::exec();
    }
    container.clear(); // while the application object still exists
    return status;
}
