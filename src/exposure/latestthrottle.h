#pragma once

#include "platform/time/clock.h"

#include <QObject>

#include <functional>
#include <optional>

namespace kestrum {

/// Passes on at most one value per interval, always the latest: a value that arrives
/// when nothing was passed on for a whole interval goes through at once; values that
/// arrive within the interval wait, and the last of them goes through when it ends.
template <typename T> class LatestThrottle {
public:
    LatestThrottle(Clock& clock, qint64 intervalMs, const QObject* context,
                   std::function<void(const T&)> deliver)
        : m_clock(clock)
        , m_intervalMs(intervalMs)
        , m_context(context)
        , m_deliver(std::move(deliver))
    {}

    void push(const T& value)
    {
        if (m_windowOpen) {
            m_pending = value;
            return;
        }
        pass(value);
    }

private:
    void pass(const T& value)
    {
        m_windowOpen = true;
        m_clock.callAfter(m_intervalMs, m_context, [this] { closeWindow(); });
        m_deliver(value);
    }

    void closeWindow()
    {
        m_windowOpen = false;
        if (m_pending) {
            const T value = *std::exchange(m_pending, std::nullopt);
            pass(value);
        }
    }

    Clock& m_clock;
    const qint64 m_intervalMs;
    const QObject* m_context;
    std::function<void(const T&)> m_deliver;
    bool m_windowOpen = false;
    std::optional<T> m_pending;
};

} // namespace kestrum
