#pragma once

#include <QString>

namespace kestrum {

/// One zoom preset of the zoom picker.
struct ZoomOption {
    float factor = 1.0f; ///< the device zoom factor, not the number shown
    QString title;       ///< label while not selected
    QString activeTitle; ///< label while selected: the shown number and "×"

    /// The identity of an option is its active title.
    const QString& id() const { return activeTitle; }

    friend bool operator==(const ZoomOption&, const ZoomOption&) = default;

    /// An option for a device factor, titled by `zoomTitle`.
    static ZoomOption make(float factor, bool halve);
};

/// The label of a zoom factor. The shown number is half the factor on devices whose
/// factor 1 is the ultra-wide lens (`halve`). Numbers are floored to one decimal;
/// factors below 1 show without a leading zero (".5") unless `active`, which appends "×".
QString zoomTitle(float factor, bool halve, bool active);

} // namespace kestrum
