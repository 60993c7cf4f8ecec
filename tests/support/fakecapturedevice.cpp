#include "fakecapturedevice.h"

#include <QThread>

namespace kestrum {

QStringList FakeCaptureDevice::calls() const
{
    const QMutexLocker locker(&m_callsMutex);
    return m_calls;
}

void FakeCaptureDevice::clearCalls()
{
    const QMutexLocker locker(&m_callsMutex);
    m_calls.clear();
}

void FakeCaptureDevice::record(const QString& call)
{
    const QMutexLocker locker(&m_callsMutex);
    m_calls.append(call);
}

QFuture<bool> FakeCaptureDevice::requestAccess()
{
    m_authorization =
        m_accessAnswer ? AuthorizationStatus::authorized : AuthorizationStatus::denied;
    return QtFuture::makeReadyFuture(m_accessAnswer);
}

void FakeCaptureDevice::createInput()
{
    if (m_failing == Failing::createInput)
        throw CaptureDeviceException(QStringLiteral("/dev/video0: Permission denied"));
}

void FakeCaptureDevice::startRunning()
{
    record(QStringLiteral("start"));
    m_startThread = QThread::currentThread();
    ++m_startCount;
    QMetaObject::invokeMethod(
        this, [this] { setRunning(true); }, Qt::QueuedConnection);
}

bool FakeCaptureDevice::lockForConfiguration(QString* error)
{
    if (m_lockError) {
        *error = *m_lockError;
        return false;
    }
    record(QStringLiteral("lock"));
    return true;
}

void FakeCaptureDevice::setExposurePointOfInterest(QPointF point)
{
    record(QStringLiteral("point %1,%2").arg(point.x()).arg(point.y()));
}

void FakeCaptureDevice::setExposureMode(ExposureMode mode)
{
    static const char* const kNames[] = {"locked", "autoExpose", "continuousAutoExposure",
                                         "custom"};
    record(QStringLiteral("exposure mode ") + QLatin1String(kNames[int(mode)]));
}

} // namespace kestrum
