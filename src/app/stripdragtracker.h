#pragma once

#include "app/stripdrag.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

/// The running drag of one exposure strip, for its QML: it follows the finger
/// (`moveTo`, which says when to tick) and, on release, names the row to select.
class StripDragTracker : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double stepPoints READ stepPoints CONSTANT)
    Q_PROPERTY(double positionPoints READ positionPoints NOTIFY positionPointsChanged)

public:
    using QObject::QObject;

    static double stepPoints() { return StripDrag::kStepPoints; }
    /// The row's translation: follows the finger, 0 between drags.
    double positionPoints() const { return m_drag.positionPoints(); }

    /// Follows the finger to `translationPoints`; true when this move gives a haptic tick.
    Q_INVOKABLE bool moveTo(double translationPoints);
    /// Ends the drag released at `translationPoints` with the finger moving at
    /// `velocityPointsPerS`: the row to select in a list of `count` whose current row is
    /// `currentIndex`, or −1 when the current value is not in the list (nothing changes,
    /// and the row stays where the finger left it). After a selection the row is back at 0.
    Q_INVOKABLE int release(double translationPoints, double velocityPointsPerS, int currentIndex,
                            int count);
    /// Drops a drag that was taken away (the row goes back to 0).
    Q_INVOKABLE void cancel();

signals:
    void positionPointsChanged();

private:
    void reset();

    StripDrag m_drag;
};

} // namespace kestrum
