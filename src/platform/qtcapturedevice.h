#pragma once

#include "capturecalibration.h"
#include "capturedevice.h"
#include "exposuretarget.h"

#include <memory>
#include <optional>

class QCamera;
class QMediaCaptureSession;
class QVideoFrame;
class QVideoSink;

namespace kestrum {

class CaptureFrameQueue;
class PreferenceStore;
class V4l2Controls;

/// The system camera through Qt Multimedia, for frames, and the camera's V4L2 controls,
/// for its exposure: Qt reports neither gain nor ISO of a webcam and cannot return it to
/// automatic exposure.
///
/// The camera is the first back-facing one, else the system's default. Its exposure
/// mode is the V4L2 auto-exposure control (aperture priority for the automatic modes,
/// manual for the others), its exposure time the absolute-exposure control (100 µs
/// units). Its ISO is taken from the gain control, 100 at the control's default and in
/// proportion above its minimum — a guess for uncalibrated webcams that the calibration
/// offset corrects. The f-number is the calibration's; the exposure target offset is
/// measured from the frames, plus the calibration offset. Zoom is remembered for the
/// preview to crop. A node the user may not open reads as access denied.
class QtCaptureDevice final : public CaptureDevice {
    Q_OBJECT

public:
    static constexpr float kMaxZoomFactor = 10.0f;

    explicit QtCaptureDevice(PreferenceStore& preferences, QObject* parent = nullptr);
    ~QtCaptureDevice() override;

    QString id() const override { return m_id; }
    AuthorizationStatus authorizationStatus() const override;
    QFuture<bool> requestAccess() override;
    bool createSession() override;
    bool findCamera() override;
    Kind kind() const override { return Kind::wideAngle; }
    QList<float> switchOverZoomFactors() const override { return {}; }
    float minZoomFactor() const override { return 1.0f; }
    float maxZoomFactor() const override { return kMaxZoomFactor; }
    void createInput() override;
    bool canAddInput() const override { return m_camera != nullptr; }
    bool canAddOutput() const override { return m_sink != nullptr; }
    void startRunning() override;
    bool isRunning() const override { return m_running; }
    bool lockForConfiguration(QString* error) override;
    void unlockForConfiguration() override {}
    void setZoomFactor(float factor) override { m_zoomFactor = factor; }
    void rampToZoomFactor(float factor, float) override { m_zoomFactor = factor; }
    void setContinuousAutoFocus() override;
    bool isExposurePointOfInterestSupported() const override { return true; }
    bool isExposureModeSupported(ExposureMode) const override { return true; }
    void setExposurePointOfInterest(QPointF point) override;
    void setExposureMode(ExposureMode mode) override;
    void setSubjectAreaChangeMonitoringEnabled(bool enabled) override;
    std::optional<float> iso() const override;
    std::optional<float> exposureDurationS() const override;
    std::optional<float> lensAperture() const override;
    std::optional<float> exposureTargetOffsetEV() const override;

    /// The zoom factor last set, for the preview to crop by.
    float zoomFactor() const { return m_zoomFactor; }

private:
    void run();
    void setRunning(bool running);
    void takeFrame(const CameraFrame& frame, double frameLuminance);

    PreferenceStore& m_preferences;
    QByteArray m_cameraId; // Qt's id of the camera: its V4L2 node
    QString m_id;
    std::optional<CaptureCalibration> m_calibration;
    std::unique_ptr<V4l2Controls> m_controls;
    QMediaCaptureSession* m_session = nullptr;
    QCamera* m_camera = nullptr;
    QVideoSink* m_sink = nullptr;
    CaptureFrameQueue* m_frames;
    ExposureTarget m_target;
    bool m_running = false;
    float m_zoomFactor = 1.0f;
};

} // namespace kestrum
