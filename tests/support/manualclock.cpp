#include "manualclock.h"

#include <QCoreApplication>

namespace kestrum {

void ManualClock::callAfter(qint64 delayMs, const QObject* context, std::function<void()> action)
{
    m_due.emplace(m_nowMs + std::max<qint64>(delayMs, 0), Scheduled{context, std::move(action)});
}

void ManualClock::advance(qint64 ms)
{
    const qint64 until = m_nowMs + ms;
    QCoreApplication::processEvents();
    while (!m_due.empty() && m_due.begin()->first <= until) {
        auto next = m_due.extract(m_due.begin());
        m_nowMs = next.key();
        if (next.mapped().context)
            next.mapped().action();
        QCoreApplication::processEvents();
    }
    m_nowMs = until;
}

} // namespace kestrum
