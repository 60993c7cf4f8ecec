#include "selfmeteringcamera.h"

#include "isofromgain.h"
#include "zoomcrop.h"

#include <QVariantAnimation>

#include <cmath>

namespace kestrum {

SelfMeteringCamera::SelfMeteringCamera(std::unique_ptr<CaptureDevice> device,
                                       PreferenceStore& preferences, QObject* parent)
    : CaptureDevice(parent)
    , m_device(std::move(device))
    , m_preferences(preferences)
    , m_zoomRamp(new QVariantAnimation(this))
{
    connect(m_device.get(), &CaptureDevice::frameArrived, this, &SelfMeteringCamera::takeFrame);
    connect(m_device.get(), &CaptureDevice::runningChanged, this, &CaptureDevice::runningChanged);
    connect(m_zoomRamp, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& factor) { m_zoomFactor = factor.toFloat(); });
}

SelfMeteringCamera::~SelfMeteringCamera()
{
    // The device may still hand over a frame while it winds down; nobody takes it now.
    m_device->disconnect(this);
}

AuthorizationStatus SelfMeteringCamera::authorizationStatus() const
{
    return m_device->authorizationStatus();
}

bool SelfMeteringCamera::findCamera()
{
    if (!m_device->findCamera())
        return false;
    m_calibration.emplace(m_preferences, m_device->id());
    emit calibrationChanged();
    return true;
}

bool SelfMeteringCamera::lockForConfiguration(QString* error)
{
    return m_device->lockForConfiguration(error);
}

void SelfMeteringCamera::setZoomFactor(float factor)
{
    m_zoomRamp->stop();
    m_zoomFactor = factor;
}

void SelfMeteringCamera::rampToZoomFactor(float factor, float rate)
{
    const float from = m_zoomFactor;
    m_zoomRamp->stop();
    if (!(from > 0.0f) || !(factor > 0.0f) || !(rate > 0.0f) || from == factor) {
        m_zoomFactor = factor;
        return;
    }
    // `rate` powers of two per second, evenly in stops of zoom.
    const double seconds = std::fabs(std::log2(double(factor) / from)) / rate;
    m_zoomRamp->setStartValue(from);
    m_zoomRamp->setEndValue(factor);
    m_zoomRamp->setDuration(std::max(1, int(std::lround(seconds * 1000.0))));
    m_zoomRamp->start();
}

void SelfMeteringCamera::setExposurePointOfInterest(QPointF point)
{
    m_target.setPointOfInterest(point);
}

void SelfMeteringCamera::setExposureMode(ExposureMode mode)
{
    m_target.setMode(mode);
    // A webcam still has its own automatic exposure to switch.
    if (m_device->isExposureModeSupported(mode))
        m_device->setExposureMode(mode);
}

void SelfMeteringCamera::setSubjectAreaChangeMonitoringEnabled(bool enabled)
{
    m_target.setSubjectAreaMonitoring(enabled);
}

std::optional<float> SelfMeteringCamera::iso() const
{
    if (const std::optional<float> reported = m_device->iso())
        return reported;
    if (const std::optional<SensorGain> gain = m_device->gain())
        return isofromgain::isoFromGain(*gain);
    return std::nullopt;
}

std::optional<float> SelfMeteringCamera::exposureDurationS() const
{
    return m_device->exposureDurationS();
}

std::optional<float> SelfMeteringCamera::lensAperture() const
{
    if (const std::optional<float> reported = m_device->lensAperture())
        return reported;
    return float(m_calibration ? m_calibration->aperture() : CaptureCalibration::kDefaultAperture);
}

std::optional<float> SelfMeteringCamera::exposureTargetOffsetEV() const
{
    const std::optional<float> measured = m_target.offsetEV();
    if (!measured || !m_calibration)
        return measured;
    return *measured + float(m_calibration->offsetEV());
}

void SelfMeteringCamera::takeFrame(const CameraFrame& frame)
{
    CameraFrame seen = frame;
    const QRect crop = zoomCrop(frame.image.size(), m_zoomFactor);
    if (crop.size() != frame.image.size())
        seen.image = frame.image.copy(crop);
    if (m_calibration)
        seen.orientation = CameraFrame::orientationForRotation(m_calibration->rotation());
    const bool subjectChanged =
        m_target.takeFrame(seen.image, exposuretarget::frameLuminance(seen.image));
    emit frameArrived(seen);
    if (subjectChanged)
        emit subjectAreaDidChange();
}

} // namespace kestrum
