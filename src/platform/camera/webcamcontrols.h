#pragma once

#include "exposuremode.h"

#include <QList>

#include <optional>

namespace kestrum {

/// How the V4L2 exposure controls of a webcam read and are written: exposure time comes
/// in units of 100 µs, and the auto-exposure control is a menu whose entries vary from
/// camera to camera.
namespace webcamcontrols {

inline constexpr double kExposureUnitS = 100e-6;

/// The exposure time of the absolute-exposure control's `units`; nothing when unknown
/// or not positive.
std::optional<float> durationFromExposureUnits(std::optional<qint32> units);

/// The value of the auto-exposure control (V4L2_CID_EXPOSURE_AUTO) for `mode`, among the
/// menu entries the camera `offers`. The automatic modes prefer aperture priority, since
/// a webcam's aperture is fixed, then full auto; the others are manual. With no list of
/// entries the preferred one is used; nothing when the camera offers none that fits.
std::optional<qint32> autoExposureEntry(ExposureMode mode, const QList<qint32>& offers);

} // namespace webcamcontrols

} // namespace kestrum
