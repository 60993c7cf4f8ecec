#pragma once

#include "v4l2controls.h"

#include "camera/exposuremode.h"

#include <QList>

#include <optional>

namespace kestrum {

/// How the V4L2 controls of a webcam read as the exposure a light meter needs, and which
/// of its auto-exposure entries serves each exposure mode.
///
/// Webcams report exposure time in units of 100 µs but no ISO; their gain control counts
/// in units of the maker's choosing. The ISO is therefore an estimate: ISO 100 at the
/// lowest gain, doubling evenly across the control up to kGainRangeStops stops at the
/// highest, which is what typical webcam sensors offer. The per-camera calibration offset
/// corrects what is left.
namespace webcamexposure {

inline constexpr double kExposureUnitS = 100e-6;
inline constexpr double kIsoAtMinimumGain = 100.0;
inline constexpr double kGainRangeStops = 4.0;

/// The ISO at `gain` of a control spanning `range`; ISO 100 when either is unknown.
float isoFromGain(std::optional<qint32> gain, std::optional<V4l2Controls::Range> range);

/// The exposure time of the absolute-exposure control's `units`; nothing when unknown
/// or not positive.
std::optional<float> durationFromExposureUnits(std::optional<qint32> units);

/// The value of the auto-exposure control (V4L2_CID_EXPOSURE_AUTO) for `mode`, among the
/// menu entries the camera `offers`. The automatic modes prefer aperture priority, since
/// a webcam's aperture is fixed, then full auto; the others are manual. With no list of
/// entries the preferred one is used; nothing when the camera offers none that fits.
std::optional<qint32> autoExposureEntry(ExposureMode mode, const QList<qint32>& offers);

} // namespace webcamexposure

} // namespace kestrum
