#include "app/appshell.h"
#include "app/dependencycontainer.h"
#include "app/linuxadapterfactory.h"
#include "app/qmlservices.h"
#include "app/toolruns.h"
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

namespace {

QQuickWindow* firstWindow(const QQmlApplicationEngine& engine)
{
    const auto roots = engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.first());
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
    // When the screenshot is taken, and taps before it (for pictures of the tap marker or
    // of a sheet); `--tap` may be given more than once.
    QCommandLineOption screenshotAfter(QStringLiteral("screenshot-after"), QString(),
                                       QStringLiteral("ms"), QStringLiteral("800"));
    QCommandLineOption tap(QStringLiteral("tap"), QString(), QStringLiteral("x,y"));
    screenshotAfter.setFlags(QCommandLineOption::HiddenFromHelp);
    tap.setFlags(QCommandLineOption::HiddenFromHelp);
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
    arguments.addOptions(
        {screenshot, screenshotAfter, tap, firstReading, quickAction, quickActionInfo});
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
        // The module's QML components live in its resources, under qrc:/Kestrum.
        engine.addImportPath(QStringLiteral("qrc:/"));
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
        QQuickWindow* window = firstWindow(engine);
        if (window && arguments.isSet(screenshot)) {
            const int delayMs = arguments.value(screenshotAfter).toInt();
            kestrum::takeScreenshot(*window, arguments.value(screenshot), delayMs);
            // Taps spread evenly before the picture, in the order given.
            const QStringList taps = arguments.values(tap);
            for (qsizetype i = 0; i < taps.size(); ++i) {
                if (const QStringList at = taps[i].split(u','); at.size() == 2) {
                    const int afterMs = int(delayMs * (i + 1) / (taps.size() + 1));
                    kestrum::tapAfter(*window, QPointF(at[0].toDouble(), at[1].toDouble()),
                                      afterMs);
                }
            }
        }
        if (window && arguments.isSet(firstReading))
            kestrum::quitAfterFirstReading(*window, container.calculationController(), sinceStart);
        status = QGuiApplication::exec();
    }
    container.clear(); // while the application object still exists
    return status;
}
