#pragma once

#include "platform/camera/capturedevice.h"

#include <QMutex>
#include <QStringList>

#include <atomic>

class QThread;

namespace kestrum {

/// A capture device for tests. The test sets its description, read-outs and failures,
/// pushes its frames and changes its running state; the device records every
/// configuration call as a line of text ("lock", "zoom 2", "ramp 2 at 6",
/// "exposure mode continuousAutoExposure", "point 0.25,0.75", "monitoring on",
/// "focus continuous", "unlock", "start").
///
/// Starting it runs it: `runningChanged(true)` follows on the main thread.
class FakeCaptureDevice final : public CaptureDevice {
    Q_OBJECT

public:
    struct Readouts {
        std::optional<float> iso;
        std::optional<float> exposureDurationS;
        std::optional<float> lensAperture;
        std::optional<float> exposureTargetOffsetEV;
        std::optional<SensorGain> gain = std::nullopt; // left out by most tests
    };

    using CaptureDevice::CaptureDevice;

    // What the test sets.
    void setAuthorization(AuthorizationStatus status) { m_authorization = status; }
    /// The user's answer to the next access request; it becomes the authorization.
    void setAccessAnswer(bool granted) { m_accessAnswer = granted; }
    void setSessionFails(bool fails) { m_sessionFails = fails; }
    void setHasCamera(bool hasCamera) { m_hasCamera = hasCamera; }
    /// The platform's reason why the input cannot be created; nothing for success.
    void setInputError(std::optional<QString> reason) { m_inputError = std::move(reason); }
    void setCanAddInput(bool can) { m_canAddInput = can; }
    void setCanAddOutput(bool can) { m_canAddOutput = can; }
    void setKind(Kind kind, QList<float> switchOverZoomFactors = {});
    void setZoomRange(float min, float max);
    /// The reason locking fails; nothing for success.
    void setLockError(std::optional<QString> error) { m_lockError = std::move(error); }
    void setPointOfInterestSupported(bool supported) { m_pointOfInterestSupported = supported; }
    void setReadouts(const Readouts& readouts) { m_readouts = readouts; }

    // What the test does.
    void pushFrame(const CameraFrame& frame) { emit frameArrived(frame); }
    void setRunning(bool running);
    void changeSubjectArea() { emit subjectAreaDidChange(); }

    // What the device was asked.
    QStringList calls() const;
    void clearCalls();
    float zoomFactor() const { return m_zoomFactor; }
    ExposureMode exposureMode() const { return m_exposureMode; }
    int startCount() const { return m_startCount; }
    /// The thread the last `startRunning` came from.
    QThread* startThread() const { return m_startThread; }

    QString id() const override { return QStringLiteral("fake"); }
    AuthorizationStatus authorizationStatus() const override { return m_authorization; }
    QFuture<bool> requestAccess() override;
    bool createSession() override { return !m_sessionFails; }
    bool findCamera() override { return m_hasCamera; }
    Kind kind() const override { return m_kind; }
    QList<float> switchOverZoomFactors() const override { return m_switchOverZoomFactors; }
    float minZoomFactor() const override { return m_minZoomFactor; }
    float maxZoomFactor() const override { return m_maxZoomFactor; }
    void createInput() override;
    bool canAddInput() const override { return m_canAddInput; }
    bool canAddOutput() const override { return m_canAddOutput; }
    void startRunning() override;
    bool isRunning() const override { return m_running; }
    bool lockForConfiguration(QString* error) override;
    void unlockForConfiguration() override;
    void setZoomFactor(float factor) override;
    void rampToZoomFactor(float factor, float rate) override;
    void setContinuousAutoFocus() override;
    bool isExposurePointOfInterestSupported() const override { return m_pointOfInterestSupported; }
    bool isExposureModeSupported(ExposureMode) const override { return true; }
    void setExposurePointOfInterest(QPointF point) override;
    void setExposureMode(ExposureMode mode) override;
    void setSubjectAreaChangeMonitoringEnabled(bool enabled) override;
    std::optional<float> iso() const override { return m_readouts.iso; }
    std::optional<float> exposureDurationS() const override { return m_readouts.exposureDurationS; }
    std::optional<float> lensAperture() const override { return m_readouts.lensAperture; }
    std::optional<float> exposureTargetOffsetEV() const override
    {
        return m_readouts.exposureTargetOffsetEV;
    }
    std::optional<SensorGain> gain() const override { return m_readouts.gain; }

private:
    void record(const QString& call);

    AuthorizationStatus m_authorization = AuthorizationStatus::authorized;
    bool m_accessAnswer = true;
    bool m_sessionFails = false;
    bool m_hasCamera = true;
    std::optional<QString> m_inputError;
    bool m_canAddInput = true;
    bool m_canAddOutput = true;
    Kind m_kind = Kind::wideAngle;
    QList<float> m_switchOverZoomFactors;
    float m_minZoomFactor = 1.0f;
    float m_maxZoomFactor = 100.0f;
    std::optional<QString> m_lockError;
    bool m_pointOfInterestSupported = true;
    Readouts m_readouts;

    bool m_running = false;
    float m_zoomFactor = 1.0f;
    ExposureMode m_exposureMode = ExposureMode::continuousAutoExposure;
    std::atomic<int> m_startCount = 0;
    std::atomic<QThread*> m_startThread = nullptr;
    mutable QMutex m_callsMutex; // starting comes from the session queue
    QStringList m_calls;
};

} // namespace kestrum
