#include "selfmeteringcapturedevice.h"

#include "captureframequeue.h"

#include <QVariantAnimation>

#include <cmath>

namespace kestrum {

SelfMeteringCaptureDevice::SelfMeteringCaptureDevice(PreferenceStore& preferences, QObject* parent)
    : CaptureDevice(parent)
    , m_preferences(preferences)
    , m_frames(new CaptureFrameQueue(this))
    , m_zoomRamp(new QVariantAnimation(this))
{
    connect(m_frames, &CaptureFrameQueue::frameReady, this, &SelfMeteringCaptureDevice::takeFrame);
    connect(m_zoomRamp, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& factor) { m_frames->setZoomFactor(factor.toFloat()); });
}

void SelfMeteringCaptureDevice::setZoomFactor(float factor)
{
    m_zoomRamp->stop();
    m_frames->setZoomFactor(factor);
}

void SelfMeteringCaptureDevice::rampToZoomFactor(float factor, float rate)
{
    const float from = zoomFactor();
    m_zoomRamp->stop();
    if (!(from > 0.0f) || !(factor > 0.0f) || !(rate > 0.0f) || from == factor) {
        m_frames->setZoomFactor(factor);
        return;
    }
    // `rate` powers of two per second, evenly in stops of zoom.
    const double seconds = std::fabs(std::log2(double(factor) / from)) / rate;
    m_zoomRamp->setStartValue(from);
    m_zoomRamp->setEndValue(factor);
    m_zoomRamp->setDuration(std::max(1, int(std::lround(seconds * 1000.0))));
    m_zoomRamp->start();
}

float SelfMeteringCaptureDevice::zoomFactor() const
{
    return m_frames->zoomFactor();
}

void SelfMeteringCaptureDevice::setExposurePointOfInterest(QPointF point)
{
    m_target.setPointOfInterest(point);
}

void SelfMeteringCaptureDevice::setExposureMode(ExposureMode mode)
{
    m_target.setMode(mode);
}

void SelfMeteringCaptureDevice::setSubjectAreaChangeMonitoringEnabled(bool enabled)
{
    m_target.setSubjectAreaMonitoring(enabled);
}

std::optional<float> SelfMeteringCaptureDevice::exposureTargetOffsetEV() const
{
    const std::optional<float> measured = m_target.offsetEV();
    if (!measured || !m_calibration)
        return measured;
    return *measured + float(m_calibration->offsetEV());
}

void SelfMeteringCaptureDevice::useCalibration(const QString& id)
{
    m_calibration.emplace(m_preferences, id);
}

float SelfMeteringCaptureDevice::calibratedAperture() const
{
    return float(m_calibration ? m_calibration->aperture() : CaptureCalibration::kDefaultAperture);
}

void SelfMeteringCaptureDevice::takeFrame(const CameraFrame& frame, double frameLuminance)
{
    CameraFrame marked = frame;
    if (m_calibration)
        marked.orientation = CameraFrame::orientationForRotation(m_calibration->rotation());
    const bool subjectChanged = m_target.takeFrame(marked.image, frameLuminance);
    emit frameArrived(marked);
    if (subjectChanged)
        emit subjectAreaDidChange();
}

} // namespace kestrum
