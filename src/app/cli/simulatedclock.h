#pragma once

#include "platform/time/clock.h"

#include <QPointer>

#include <map>

namespace kestrum::cli {

/// Time for a command that simulates a stretch of the app's life, such as the meter
/// running for some seconds: `runFor` passes the time at once, running every action that
/// falls due in time order and letting the event loop deliver queued work in between, as
/// the real main loop would.
class SimulatedClock final : public Clock {
public:
    qint64 nowMs() const override { return m_nowMs; }
    void callAfter(qint64 delayMs, const QObject* context, std::function<void()> action) override;

    void runFor(qint64 ms);

private:
    qint64 m_nowMs = 0;
    std::multimap<qint64, std::pair<QPointer<const QObject>, std::function<void()>>> m_due;
};

} // namespace kestrum::cli
