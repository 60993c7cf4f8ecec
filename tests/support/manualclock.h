#pragma once

#include "platform/time/clock.h"

#include <QPointer>

#include <map>

namespace kestrum {

/// A clock that moves only when told to: `advance` runs every action that falls due,
/// in time order (and, at equal times, in the order they were scheduled). Between due
/// times it lets the event loop deliver queued work, as the real main loop would.
class ManualClock final : public Clock {
public:
    qint64 nowMs() const override { return m_nowMs; }
    void callAfter(qint64 delayMs, const QObject* context, std::function<void()> action) override;

    /// Moves time forward by `ms`, running what falls due on the way.
    void advance(qint64 ms);

private:
    struct Scheduled {
        QPointer<const QObject> context;
        std::function<void()> action;
    };

    qint64 m_nowMs = 0;
    std::multimap<qint64, Scheduled> m_due;
};

} // namespace kestrum
