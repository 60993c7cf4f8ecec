#pragma once

#include "windowicon.h"

namespace kestrum {

/// The window icon of a Qt GUI application: the application's own, which every window
/// without an icon of its own carries. Needs a QGuiApplication.
class QtWindowIcon final : public WindowIcon {
public:
    bool show(const QString& picturePath) override;
};

} // namespace kestrum
