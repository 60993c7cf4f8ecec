#pragma once

namespace kestrum {

/// Feedback the device plays in the hand: a vibration or sound, as the system's
/// feedback settings allow. Where there is no feedback service, nothing happens.
class Haptics {
public:
    enum class Feedback {
        selection, ///< a value or option changed under the finger
        success,   ///< an action completed
        error,     ///< an action failed
    };

    virtual ~Haptics() = default;

    /// Plays `feedback`; returns at once.
    virtual void play(Feedback feedback) = 0;
};

} // namespace kestrum
