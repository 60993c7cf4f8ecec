#pragma once

#include <QString>

namespace kestrum {

/// The icon the app's windows carry, which task bars and window switchers show where the
/// desktop does not take it from the launcher's entry.
class WindowIcon {
public:
    virtual ~WindowIcon() = default;

    /// Gives every window of the app the picture at `picturePath` (an SVG or bitmap file,
    /// or a Qt resource). False, changing nothing, when there is no picture there.
    virtual bool show(const QString& picturePath) = 0;
};

} // namespace kestrum
