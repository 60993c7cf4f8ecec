#pragma once

#include "platform/time/clock.h"

#include <QObject>
#include <QPointF>
#include <QRectF>

#include <cstdint>

namespace kestrum {

/// The square drawn where the user tapped to meter: shown at once, fading out 2.0 s after
/// the tap over 0.3 s, then gone. A new tap moves it and restarts the wait; a change of the
/// subject area (the camera going back to following the scene) removes it at once. Faces
/// leave it alone. The view draws `rect` and animates the fade; the times run on the
/// injected clock.
class TapMarker : public QObject {
    Q_OBJECT

public:
    static constexpr qint64 kShownMs = 2000;
    static constexpr qint64 kFadeMs = 300;
    static constexpr double kSidePoints = 60.0;

    enum class Phase {
        hidden,
        shown,
        fading, ///< the view animates the opacity from 1 to 0 over `kFadeMs`
    };
    Q_ENUM(Phase)

    explicit TapMarker(Clock& clock, QObject* parent = nullptr);

    /// A tap at `viewPoint`.
    void tap(QPointF viewPoint);
    /// The camera reports that the metered scene changed.
    void subjectAreaChanged();

    Phase phase() const { return m_phase; }
    /// The 60 × 60 square centred on the last tap.
    QRectF rect() const;

signals:
    void changed();

private:
    void enter(Phase phase);

    Clock& m_clock;
    Phase m_phase = Phase::hidden;
    QPointF m_centre;
    /// Counts taps and removals, so that the timers of a replaced marker do nothing.
    std::uint64_t m_generation = 0;
};

} // namespace kestrum
