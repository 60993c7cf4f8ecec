#pragma once

#include "platform/location/location.h"

#include "exposure/exposurecomponent.h"
#include "platform/photos/imageproperties.h"

#include <optional>

namespace kestrum {

/// The camera model written into every logged photo.
inline constexpr auto kLoggedPhotoModel = "Kestrum Light Meter";

/// The metadata of a logged photo: the exposure the meter showed, and where it was taken.
///
/// "{Exif}": "ExifVersion" [2, 3]; "ISOSpeed" and "ISOSpeedRatings" [ISOSpeed] from the
/// ISO's display text, "FNumber" from the aperture's display text (each 0 when the text
/// is not a number); "ExposureTime" from the speed's display text (see exposureTime);
/// "ExposureBiasValue" the compensation's value, not its text. "{TIFF}": "Model". "{GPS}",
/// only with a location: "Altitude" (metres), "Longitude" and "Latitude" (signed degrees).
ImageProperties loggedPhotoMetadata(const ISO& iso, const Aperture& aperture,
                                    const ShutterSpeed& speed, const Compensation& compensation,
                                    const std::optional<Location>& location);

/// The whole of `text` read as a decimal number, or nothing when any of it is not part of
/// one (no spaces, no leading "+").
std::optional<double> parseDisplayNumber(const QString& text);

/// The exposure time in seconds that a shutter speed's display text stands for: a text
/// ending in "s" gives seconds ("1.5s" is 1.5), any other a denominator ("125" is 1/125).
/// Every "s" is removed before reading the number; a text that is still not a number
/// gives 0.
double exposureTime(const QString& speedDisplay);

} // namespace kestrum
