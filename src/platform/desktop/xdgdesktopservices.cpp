#include "xdgdesktopservices.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>

namespace kestrum {

bool XdgDesktopServices::openUrl(const QUrl& url)
{
    return QDesktopServices::openUrl(url);
}

bool XdgDesktopServices::openCameraSettings()
{
    return openSettingsPage(Page::camera);
}

bool XdgDesktopServices::openLocationSettings()
{
    return openSettingsPage(Page::location);
}

bool XdgDesktopServices::openSettingsPage(Page page)
{
    struct Launcher {
        const char* program;
        const char* cameraPage;
        const char* locationPage;
    };
    // The settings programs that have privacy pages, with the page names they take.
    static constexpr Launcher kLaunchers[] = {
        {"gnome-control-center", "camera", "location"},
    };
    for (const Launcher& launcher : kLaunchers) {
        const QString program =
            QStandardPaths::findExecutable(QString::fromLatin1(launcher.program));
        if (program.isEmpty())
            continue;
        const char* pageName = page == Page::camera ? launcher.cameraPage : launcher.locationPage;
        return QProcess::startDetached(program, {QString::fromLatin1(pageName)});
    }
    return false;
}

} // namespace kestrum
