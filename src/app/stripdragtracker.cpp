#include "stripdragtracker.h"

namespace kestrum {

bool StripDragTracker::moveTo(double translationPoints)
{
    const double before = m_drag.positionPoints();
    const bool tick = m_drag.moveTo(translationPoints);
    if (m_drag.positionPoints() != before)
        emit positionPointsChanged();
    return tick;
}

int StripDragTracker::release(double translationPoints, double velocityPointsPerS, int currentIndex,
                              int count)
{
    const std::optional<int> current =
        currentIndex >= 0 ? std::optional<int>(currentIndex) : std::nullopt;
    const int steps = StripDrag::releaseSteps(
        translationPoints, StripDrag::predictedEndPoints(translationPoints, velocityPointsPerS));
    const std::optional<int> index = StripDrag::releasedIndex(current, count, steps);
    if (!index)
        return -1;
    reset();
    return *index;
}

void StripDragTracker::cancel()
{
    reset();
}

void StripDragTracker::reset()
{
    const bool moved = m_drag.positionPoints() != 0.0;
    m_drag = StripDrag();
    if (moved)
        emit positionPointsChanged();
}

} // namespace kestrum
