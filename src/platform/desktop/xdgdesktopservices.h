#pragma once

#include "desktopservices.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace kestrum {

/// Links and settings pages on a freedesktop system. Links go through Qt's desktop
/// services (xdg-open, or the portal inside a sandbox). The system's privacy pages open
/// in the first settings program found on the PATH that has them: GNOME's Settings,
/// which Phosh uses too, has a camera and a location page; Plasma's System Settings has
/// neither, so there the answer is false.
class XdgDesktopServices final : public DesktopServices {
public:
    bool openUrl(const QUrl& url) override;
    bool openCameraSettings() override;
    bool openLocationSettings() override;

private:
    enum class Page { camera, location };
    static bool openSettingsPage(Page page);
};

} // namespace kestrum
