#pragma once

#include <QString>

namespace kestrum {

/// The icon the launcher shows for the app: the app's own, or one of its alternate icons
/// by name.
class AppIcon {
public:
    virtual ~AppIcon() = default;

    /// The alternate icon in use; empty for the app's own.
    virtual QString alternateIconName() const = 0;
    /// Shows the alternate icon `name` (empty: the app's own). False when it could not
    /// be set.
    virtual bool setAlternateIconName(const QString& name) = 0;
};

} // namespace kestrum
