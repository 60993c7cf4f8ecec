#include "stripdrag.h"

#include <algorithm>
#include <cmath>

namespace kestrum {

bool StripDrag::moveTo(double translationPoints)
{
    m_positionPoints = translationPoints;
    if (std::fabs(m_positionPoints - m_lastTickPoints) < kStepPoints)
        return false;
    m_lastTickPoints = m_positionPoints;
    return true;
}

double StripDrag::predictedEndPoints(double translationPoints, double velocityPointsPerS)
{
    return translationPoints + velocityPointsPerS * kCoastS;
}

int StripDrag::releaseSteps(double translationPoints, double predictedPoints)
{
    if (std::fabs(predictedPoints) - std::fabs(translationPoints) > kFlingExcessPoints)
        return static_cast<int>(std::floor(predictedPoints / kStepPoints));
    // std::round rounds halves away from zero.
    return static_cast<int>(std::round(translationPoints / kStepPoints));
}

std::optional<int> StripDrag::releasedIndex(std::optional<int> currentIndex, int count, int steps)
{
    if (!currentIndex || count <= 0)
        return std::nullopt;
    return std::clamp(*currentIndex - steps, 0, count - 1);
}

} // namespace kestrum
