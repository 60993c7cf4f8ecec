#include "faceoutlinevisibility.h"

namespace kestrum {

FaceOutlineVisibility::FaceOutlineVisibility(Clock& clock, QObject* parent)
    : QObject(parent)
    , m_clock(clock)
{}

void FaceOutlineVisibility::faceSeen()
{
    const std::uint64_t generation = ++m_generation;
    setVisible(true);
    m_clock.callAfter(kHideAfterMs, this, [this, generation] {
        if (generation == m_generation)
            setVisible(false);
    });
}

void FaceOutlineVisibility::setVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    emit visibleChanged();
}

} // namespace kestrum
