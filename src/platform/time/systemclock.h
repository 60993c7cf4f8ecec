#pragma once

#include "clock.h"

#include <QElapsedTimer>

namespace kestrum {

/// Wall-clock time on the Qt event loop (precise timers).
class SystemClock final : public Clock {
public:
    SystemClock();

    qint64 nowMs() const override;
    void callAfter(qint64 delayMs, const QObject* context, std::function<void()> action) override;

private:
    QElapsedTimer m_elapsed;
};

} // namespace kestrum
