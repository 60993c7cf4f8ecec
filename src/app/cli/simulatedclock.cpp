#include "simulatedclock.h"

#include <QCoreApplication>

namespace kestrum::cli {

void SimulatedClock::callAfter(qint64 delayMs, const QObject* context, std::function<void()> action)
{
    m_due.emplace(m_nowMs + std::max<qint64>(delayMs, 0),
                  std::pair(QPointer<const QObject>(context), std::move(action)));
}

void SimulatedClock::runFor(qint64 ms)
{
    const qint64 end = m_nowMs + ms;
    for (QCoreApplication::processEvents(); !m_due.empty() && m_due.begin()->first <= end;
         QCoreApplication::processEvents()) {
        auto [dueMs, scheduled] = *m_due.begin();
        m_due.erase(m_due.begin());
        m_nowMs = dueMs;
        if (scheduled.first)
            scheduled.second();
    }
    m_nowMs = end;
}

} // namespace kestrum::cli
