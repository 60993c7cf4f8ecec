#include "tapmarker.h"

namespace kestrum {

TapMarker::TapMarker(Clock& clock, QObject* parent)
    : QObject(parent)
    , m_clock(clock)
{}

void TapMarker::tap(QPointF viewPoint)
{
    const std::uint64_t generation = ++m_generation;
    m_centre = viewPoint;
    enter(Phase::shown);
    m_clock.callAfter(kShownMs, this, [this, generation] {
        if (generation != m_generation)
            return;
        enter(Phase::fading);
        m_clock.callAfter(kFadeMs, this, [this, generation] {
            if (generation == m_generation)
                enter(Phase::hidden);
        });
    });
}

void TapMarker::subjectAreaChanged()
{
    ++m_generation;
    enter(Phase::hidden);
}

QRectF TapMarker::rect() const
{
    const double half = kSidePoints / 2.0;
    return {m_centre - QPointF(half, half), QSizeF(kSidePoints, kSidePoints)};
}

void TapMarker::enter(Phase phase)
{
    m_phase = phase;
    emit changed();
}

} // namespace kestrum
