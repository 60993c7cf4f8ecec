#pragma once

#include <QString>

namespace kestrum {

/// Why no entry of a scale gives a correct exposure.
enum class ExposureError {
    underexposed, ///< not enough light for any entry of the scale
    overexposed,  ///< too much light for any entry of the scale
};

/// "underexposed" or "overexposed".
QString rawValue(ExposureError error);

/// The translation key of the spoken description of an error.
QString accessibilityKey(ExposureError error);

} // namespace kestrum
