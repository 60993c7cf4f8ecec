#pragma once

#include "capturecalibration.h"
#include "exposuretarget.h"

#include "platform/camera/capturedevice.h"

#include <memory>
#include <optional>

class QVariantAnimation;

namespace kestrum {

class PreferenceStore;

/// A camera with one fixed lens that does no metering of its own (a webcam, or recorded
/// footage), made to answer what the camera controller asks of a phone camera. Wraps the
/// device and works out from its frames and the camera's calibration:
///
/// - the exposure target offset, measured on each frame (centre-weighted, or a spot at
///   the point of interest after a one-shot expose), plus the calibration offset; a large
///   change of the frame's brightness while monitoring is a subject-area change;
/// - zoom (1× to kMaxZoomFactor), which crops the middle of every frame, so that metering,
///   faces and logged photos all see what a zoomed lens would; a ramp moves there
///   smoothly;
/// - the f-number, from the calibration when the device reports none; the ISO, from the
///   sensor's gain when the device reports no ISO;
/// - the sensor's rotation, marked on every frame.
///
/// Set-up, authorization, running and the exposure time are the device's own.
class SelfMeteringCamera final : public CaptureDevice {
    Q_OBJECT

public:
    static constexpr float kMaxZoomFactor = 10.0f;

    /// `preferences` holds the calibration and must outlive the camera.
    SelfMeteringCamera(std::unique_ptr<CaptureDevice> device, PreferenceStore& preferences,
                       QObject* parent = nullptr);
    ~SelfMeteringCamera() override;

    QString id() const override { return m_device->id(); }
    AuthorizationStatus authorizationStatus() const override;
    QFuture<bool> requestAccess() override { return m_device->requestAccess(); }
    bool createSession() override { return m_device->createSession(); }
    /// Also starts reading the calibration of the camera found (`calibrationChanged`).
    bool findCamera() override;
    /// The calibration of the camera found; null before `findCamera` succeeded.
    CaptureCalibration* calibration() { return m_calibration ? &*m_calibration : nullptr; }
    /// Whether the device reports its f-number (footage whose sidecar gives one); one that
    /// does not takes it from the calibration.
    bool reportsAperture() const { return m_device->lensAperture().has_value(); }
    Kind kind() const override { return Kind::wideAngle; }
    QList<float> switchOverZoomFactors() const override { return {}; }
    float minZoomFactor() const override { return 1.0f; }
    float maxZoomFactor() const override { return kMaxZoomFactor; }
    void createInput() override { m_device->createInput(); }
    bool canAddInput() const override { return m_device->canAddInput(); }
    bool canAddOutput() const override { return m_device->canAddOutput(); }
    void startRunning() override { m_device->startRunning(); }
    bool isRunning() const override { return m_device->isRunning(); }
    bool lockForConfiguration(QString* error) override;
    void unlockForConfiguration() override { m_device->unlockForConfiguration(); }
    void setZoomFactor(float factor) override;
    void rampToZoomFactor(float factor, float rate) override;
    /// The zoom of the frames delivered from now on.
    float zoomFactor() const { return m_zoomFactor; }
    void setContinuousAutoFocus() override { m_device->setContinuousAutoFocus(); }
    bool isExposurePointOfInterestSupported() const override { return true; }
    bool isExposureModeSupported(ExposureMode) const override { return true; }
    void setExposurePointOfInterest(QPointF point) override;
    void setExposureMode(ExposureMode mode) override;
    void setSubjectAreaChangeMonitoringEnabled(bool enabled) override;

    std::optional<float> iso() const override;
    std::optional<float> exposureDurationS() const override;
    std::optional<float> lensAperture() const override;
    std::optional<float> exposureTargetOffsetEV() const override;

signals:
    /// A camera was found: its calibration is the one read from now on.
    void calibrationChanged();

private:
    void takeFrame(const CameraFrame& frame);

    std::unique_ptr<CaptureDevice> m_device;
    PreferenceStore& m_preferences;
    std::optional<CaptureCalibration> m_calibration;
    QVariantAnimation* m_zoomRamp;
    float m_zoomFactor = 1.0f;
    ExposureTarget m_target;
};

} // namespace kestrum
