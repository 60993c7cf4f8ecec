#include "stepperstate.h"

namespace kestrum {

void StepperState::setCurrentIndex(int index)
{
    const std::optional<int> current = index >= 0 ? std::optional<int>(index) : std::nullopt;
    if (current == m_stepper.currentIndex)
        return;
    m_stepper.currentIndex = current;
    emit changed();
}

void StepperState::setCount(int count)
{
    if (count == m_stepper.count)
        return;
    m_stepper.count = count;
    emit changed();
}

} // namespace kestrum
