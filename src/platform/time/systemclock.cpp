#include "systemclock.h"

#include <QTimer>

namespace kestrum {

SystemClock::SystemClock()
{
    m_elapsed.start();
}

qint64 SystemClock::nowMs() const
{
    return m_elapsed.elapsed();
}

void SystemClock::callAfter(qint64 delayMs, const QObject* context, std::function<void()> action)
{
    QTimer::singleShot(std::chrono::milliseconds(delayMs), Qt::PreciseTimer, context,
                       std::move(action));
}

} // namespace kestrum
