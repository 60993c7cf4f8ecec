#pragma once

#include "platform/camera/capturedevice.h"

namespace kestrum {

/// The ISO speed of a sensor that reports only its gain, as webcams do. Their gain counts
/// in units of the maker's choosing, so the ISO is an estimate: ISO 100 at the lowest
/// gain, doubling evenly across the control up to kGainRangeStops stops at the highest,
/// which is what typical webcam sensors offer. The per-camera calibration offset corrects
/// what is left.
namespace isofromgain {

inline constexpr double kIsoAtMinimumGain = 100.0;
inline constexpr double kGainRangeStops = 4.0;

/// The ISO at `gain`; ISO 100 when the gain or its range is unknown or empty.
float isoFromGain(const SensorGain& gain);

} // namespace isofromgain

} // namespace kestrum
