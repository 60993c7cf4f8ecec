#pragma once

#include <optional>

namespace kestrum {

/// The drag arithmetic of an exposure strip: a row of scale entries that follows the finger
/// sideways and, on release, moves the selection by whole steps of 48 points. Dragging to
/// the right (a positive translation) moves towards the start of the list.
///
/// A value type: the QML strip keeps one for the running drag, feeds it every translation
/// and gives a haptic tick whenever `moveTo` says so.
class StripDrag {
public:
    /// Horizontal travel of one selection step, and of one haptic tick.
    static constexpr double kStepPoints = 48.0;
    /// How far the predicted end must outrun the translation for a release to be a fling.
    static constexpr double kFlingExcessPoints = 100.0;
    /// The time over which a release coasts at its release speed: the predicted end is
    /// the translation plus velocity × this time. A fifth of a second makes a brisk flick
    /// of 500 points/s reach exactly the fling threshold.
    static constexpr double kCoastS = 0.2;

    /// Follows the finger to `translationPoints`; true when this move gives a tick, that is
    /// when it is at least one step away from the place of the last tick (in either
    /// direction), which becomes the new place.
    bool moveTo(double translationPoints);

    /// The current translation of the row; 0 before the first move. A new drag starts from
    /// a fresh `StripDrag`.
    double positionPoints() const { return m_positionPoints; }

    /// Where a release at `translationPoints` with the finger moving at
    /// `velocityPointsPerS` (positive to the right) would come to rest.
    static double predictedEndPoints(double translationPoints, double velocityPointsPerS);

    /// The selection steps of a release at `translationPoints` that would come to rest at
    /// `predictedEndPoints`, positive towards the start of the list. A fling (the predicted
    /// end outruns the translation by more than `kFlingExcessPoints`) floors the predicted
    /// end in steps, so a leftward fling goes one step further and a rightward one a step
    /// shorter than rounding would; a plain release rounds the translation in steps, halves
    /// away from zero.
    static int releaseSteps(double translationPoints, double predictedEndPoints);

    /// The row selected after a release of `steps` from `currentIndex` in a list of
    /// `count` entries, held at the ends; none when the current value is not in the list,
    /// and then the release changes nothing.
    static std::optional<int> releasedIndex(std::optional<int> currentIndex, int count, int steps);

private:
    double m_positionPoints = 0.0;
    double m_lastTickPoints = 0.0;
};

} // namespace kestrum
