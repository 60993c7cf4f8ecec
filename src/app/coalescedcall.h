#pragma once

#include <QObject>

#include <functional>

namespace kestrum {

/// An action run once on the next turn of `context`'s event loop, however often it was
/// asked for before then: a facade re-reads its source once after a burst of changes,
/// when the source has finished writing.
class CoalescedCall {
public:
    CoalescedCall(QObject* context, std::function<void()> action)
        : m_context(context)
        , m_action(std::move(action))
    {}

    void schedule()
    {
        if (m_queued)
            return;
        m_queued = true;
        QMetaObject::invokeMethod(
            m_context,
            [this] {
                m_queued = false;
                m_action();
            },
            Qt::QueuedConnection);
    }

private:
    QObject* m_context;
    std::function<void()> m_action;
    bool m_queued = false;
};

} // namespace kestrum
