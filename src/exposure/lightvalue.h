#pragma once

#include <QString>

namespace kestrum {

/// The ISO speed that light values refer to.
inline constexpr double kLightValueReferenceISO = 100.0;

/// The light value (at ISO 100, in stops) of a scene that an exposure of f-number
/// `fNumber`, `exposureTimeS` seconds and ISO speed `iso` renders as intended, shifted by
/// `offsetEV` stops: LV = log2(N² / t) − log2(S / 100) + offset.
///
/// The camera uses it with its own exposure and how far the metered scene is from its
/// target; the calculator with the photographer's settings and their compensation.
double lightValue(double fNumber, double exposureTimeS, double iso, double offsetEV = 0.0);

/// The light value as the screen shows it beside the computed exposure, so that it can
/// be checked against a handheld meter: "LV 12.3", one decimal, a true minus sign below
/// zero ("LV −1.5"), and never a negative zero.
QString lightValueText(double lightValue);

} // namespace kestrum
