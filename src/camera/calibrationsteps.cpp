#include "calibrationsteps.h"

#include "exposure/scale.h"

#include <algorithm>
#include <cmath>

namespace kestrum::CalibrationSteps {

namespace {
const QString kUnit = QStringLiteral(" EV");

int clamped(int row)
{
    return std::clamp(row, 0, kCount - 1);
}
} // namespace

double offsetEV(int row)
{
    return double(clamped(row) - kZeroRow) / kStepsPerStop;
}

int rowOf(double offsetEV)
{
    if (std::isnan(offsetEV))
        return kZeroRow;
    // Clamped before rounding, so that no offset is too large for a long.
    const double steps = std::clamp(offsetEV * kStepsPerStop, -double(kZeroRow), double(kZeroRow));
    return clamped(kZeroRow + int(std::lround(steps)));
}

QString text(int row)
{
    const auto& thirds = scale<Compensation>(Fraction::third);
    return nearestEntry<Compensation>(thirds, offsetEV(row)).signedDisplay() + kUnit;
}

} // namespace kestrum::CalibrationSteps
