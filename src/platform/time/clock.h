#pragma once

#include <QObject>

#include <functional>

namespace kestrum {

/// The time source of everything that waits: throttles, periodic timers and delays.
///
/// The app runs on `SystemClock`; tests and simulations run on `ManualClock` and step
/// time forward without sleeping.
class Clock {
public:
    virtual ~Clock() = default;

    /// Milliseconds since an arbitrary, fixed start.
    virtual qint64 nowMs() const = 0;

    /// Runs `action` once, on `context`'s thread, `delayMs` from now; dropped when
    /// `context` is destroyed first.
    virtual void callAfter(qint64 delayMs, const QObject* context,
                           std::function<void()> action) = 0;
};

} // namespace kestrum
