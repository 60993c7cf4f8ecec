#include "app/dependencycontainer.h"
#include "platform/inipreferencestore.h"
#include "settings/profilesettings.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>

namespace {

constexpr int kScreenshotDelayMs = 500; // let the first frames settle

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

    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addVersionOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture of the window and quit."),
                                        QStringLiteral("file.png"));
    arguments.addOption(screenshot);
    arguments.process(app);

    auto store = std::make_unique<kestrum::IniPreferenceStore>(
        kestrum::IniPreferenceStore::defaultFilePath());
    auto profile = std::make_unique<kestrum::ProfileSettings>(QStringLiteral("default"), *store);
    kestrum::DependencyContainer::shared().fill(std::move(store), std::move(profile));

    QQmlApplicationEngine engine;
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreationFailed, &app,
        [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
    engine.load(QUrl(QStringLiteral("qrc:/Kestrum/Main.qml")));
    if (arguments.isSet(screenshot))
        takeScreenshot(engine, arguments.value(screenshot));
    return QGuiApplication::exec();
}
