#pragma once

#include "fixedlenscapturedevice.h"

#include <memory>
#include <optional>

class QCamera;
class QMediaCaptureSession;
class QVideoFrame;
class QVideoSink;

namespace kestrum {

class V4l2Controls;

/// The system camera through Qt Multimedia, for frames, and the camera's V4L2 controls,
/// for its exposure: Qt reports neither gain nor ISO of a webcam and cannot return it to
/// automatic exposure.
///
/// The camera is the first back-facing one, else the system's default. Its exposure
/// mode, exposure time and gain come from the V4L2 controls as webcamcontrols reads them;
/// it reports no ISO and no f-number. A node the user may not open reads as access denied.
class QtCaptureDevice final : public FixedLensCaptureDevice {
    Q_OBJECT

public:
    explicit QtCaptureDevice(QObject* parent = nullptr);
    ~QtCaptureDevice() override;

    QString id() const override { return m_id; }
    AuthorizationStatus authorizationStatus() const override;
    QFuture<bool> requestAccess() override;
    bool createSession() override;
    bool findCamera() override;
    void createInput() override;
    bool canAddInput() const override { return m_camera != nullptr; }
    bool canAddOutput() const override { return m_sink != nullptr; }
    void startRunning() override;
    bool isRunning() const override { return m_running; }
    bool lockForConfiguration(QString* error) override;
    void unlockForConfiguration() override {}
    void setContinuousAutoFocus() override;
    bool isExposureModeSupported(ExposureMode) const override { return true; }
    void setExposureMode(ExposureMode mode) override;
    std::optional<float> iso() const override { return std::nullopt; }
    std::optional<float> exposureDurationS() const override;
    std::optional<float> lensAperture() const override { return std::nullopt; }
    std::optional<SensorGain> gain() const override;

private:
    void run();
    void setRunning(bool running);

    QByteArray m_cameraId; // Qt's id of the camera: its V4L2 node
    QString m_id;
    std::unique_ptr<V4l2Controls> m_controls;
    QMediaCaptureSession* m_session = nullptr;
    QCamera* m_camera = nullptr;
    QVideoSink* m_sink = nullptr;
    bool m_running = false;
};

} // namespace kestrum
