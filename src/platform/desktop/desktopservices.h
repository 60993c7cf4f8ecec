#pragma once

#include <QUrl>

namespace kestrum {

/// What the app asks of the desktop around it: opening links and the system's own
/// settings pages.
class DesktopServices {
public:
    virtual ~DesktopServices() = default;

    /// Opens `url` in the program the system chooses for it (a browser, the software
    /// centre for `appstream:` links, the mail program for `mailto:` links). False when
    /// nothing could open it.
    virtual bool openUrl(const QUrl& url) = 0;
    /// Opens the system's privacy settings for the camera; false when there are none.
    virtual bool openCameraSettings() = 0;
    /// Opens the system's location settings; false when there are none.
    virtual bool openLocationSettings() = 0;
};

} // namespace kestrum
