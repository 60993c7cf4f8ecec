#pragma once

#include <QString>

namespace kestrum {

/// The calibration offsets the settings offer a camera: thirds of a stop from −3 to +3 EV,
/// as the rows of a stepper, darkest first.
namespace CalibrationSteps {

inline constexpr int kStepsPerStop = 3;
inline constexpr int kMaxStops = 3;
/// How many rows there are: 19.
inline constexpr int kCount = 2 * kMaxStops * kStepsPerStop + 1;
/// The row of no offset.
inline constexpr int kZeroRow = kMaxStops * kStepsPerStop;

/// The offset of `row` in exact thirds of a stop (row 10 is 1/3, not 0.33, so that a
/// reading moves by a true third); the nearest end for a row out of range.
double offsetEV(int row);

/// The row nearest to a stored `offsetEV`, kept within the ends; the row of no offset
/// for a value that is not a number.
int rowOf(double offsetEV);

/// The text of `row` ("+⅓ EV", "−1⅔ EV", "0 EV"): the signed display text of the
/// third-stop compensation scale, with its true minus and ⅓ and ⅔ glyphs, and the unit.
QString text(int row);

} // namespace CalibrationSteps

} // namespace kestrum
