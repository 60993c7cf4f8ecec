#pragma once

#include <optional>

namespace kestrum {

/// The minus and plus buttons of a compensation control, driven by the row of the current
/// value in the list on offer (none when the value is not in the list).
///
/// The two buttons are not mirror images: a value that is not in the list leaves minus
/// enabled (pressing it does nothing) and plus disabled.
struct CompensationStepper {
    std::optional<int> currentIndex;
    int count = 0;

    /// Whether plus is enabled: the value is in the list and not its last entry.
    bool incrementEnabled() const;
    /// Whether minus is enabled: the value is not in the list, or not its first entry.
    bool decrementEnabled() const;

    /// The row plus selects; none when pressing it does nothing.
    std::optional<int> incremented() const;
    /// The row minus selects; none when pressing it does nothing.
    std::optional<int> decremented() const;
};

/// Whether a control is tinted as changed (yellow rather than white): it has a default
/// and its current value differs from it.
template <typename C>
bool differsFromDefault(const C& currentValue, const std::optional<C>& defaultValue)
{
    return defaultValue && !(*defaultValue == currentValue);
}

} // namespace kestrum
