#include "compensationstepper.h"

namespace kestrum {

bool CompensationStepper::incrementEnabled() const
{
    return currentIndex && *currentIndex < count - 1;
}

bool CompensationStepper::decrementEnabled() const
{
    return !currentIndex || *currentIndex > 0;
}

std::optional<int> CompensationStepper::incremented() const
{
    if (!incrementEnabled())
        return std::nullopt;
    return *currentIndex + 1;
}

std::optional<int> CompensationStepper::decremented() const
{
    if (!currentIndex || *currentIndex <= 0)
        return std::nullopt;
    return *currentIndex - 1;
}

} // namespace kestrum
