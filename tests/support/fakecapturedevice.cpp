#include "fakecapturedevice.h"

#include <QThread>

namespace kestrum {

namespace {

QString modeName(ExposureMode mode)
{
    switch (mode) {
    case ExposureMode::locked:
        return QStringLiteral("locked");
    case ExposureMode::autoExpose:
        return QStringLiteral("autoExpose");
    case ExposureMode::continuousAutoExposure:
        return QStringLiteral("continuousAutoExposure");
    case ExposureMode::custom:
        break;
    }
    return QStringLiteral("custom");
}

} // namespace

void FakeCaptureDevice::setKind(Kind kind, QList<float> switchOverZoomFactors)
{
    m_kind = kind;
    m_switchOverZoomFactors = std::move(switchOverZoomFactors);
}

void FakeCaptureDevice::setZoomRange(float min, float max)
{
    m_minZoomFactor = min;
    m_maxZoomFactor = max;
}

void FakeCaptureDevice::setRunning(bool running)
{
    m_running = running;
    emit runningChanged(running);
}

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
    if (m_inputError)
        throw CaptureDeviceException(*m_inputError);
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

void FakeCaptureDevice::unlockForConfiguration()
{
    record(QStringLiteral("unlock"));
}

void FakeCaptureDevice::setZoomFactor(float factor)
{
    m_zoomFactor = factor;
    record(QStringLiteral("zoom %1").arg(factor));
}

void FakeCaptureDevice::rampToZoomFactor(float factor, float rate)
{
    m_zoomFactor = factor;
    record(QStringLiteral("ramp %1 at %2").arg(factor).arg(rate));
}

void FakeCaptureDevice::setContinuousAutoFocus()
{
    record(QStringLiteral("focus continuous"));
}

void FakeCaptureDevice::setExposurePointOfInterest(QPointF point)
{
    record(QStringLiteral("point %1,%2").arg(point.x()).arg(point.y()));
}

void FakeCaptureDevice::setExposureMode(ExposureMode mode)
{
    m_exposureMode = mode;
    record(QStringLiteral("exposure mode ") + modeName(mode));
}

void FakeCaptureDevice::setSubjectAreaChangeMonitoringEnabled(bool enabled)
{
    record(enabled ? QStringLiteral("monitoring on") : QStringLiteral("monitoring off"));
}

} // namespace kestrum
