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
    /// The set-up step that fails, if any; creating the input fails with the reason
    /// "/dev/video0: Permission denied".
    enum class Failing { nothing, session, camera, createInput, addInput, addOutput };

    using CaptureDevice::CaptureDevice;

    // What the test sets.
    void setAuthorization(AuthorizationStatus status) { m_authorization = status; }
    /// The user's answer to the next access request; it becomes the authorization.
    void setAccessAnswer(bool granted) { m_accessAnswer = granted; }
    void setFailing(Failing step) { m_failing = step; }
    void setKind(Kind kind, QList<float> switchOverZoomFactors = {})
    {
        m_kind = kind;
        m_switchOverZoomFactors = std::move(switchOverZoomFactors);
    }
    void setZoomRange(float min, float max)
    {
        m_minZoomFactor = min;
        m_maxZoomFactor = max;
    }
    /// The reason locking fails; nothing for success.
    void setLockError(std::optional<QString> error) { m_lockError = std::move(error); }
    void setPointOfInterestSupported(bool supported) { m_pointOfInterestSupported = supported; }
    void setReadouts(const Readouts& readouts) { m_readouts = readouts; }

    // What the test does.
    void pushFrame(const CameraFrame& frame) { emit frameArrived(frame); }
    void setRunning(bool running)
    {
        m_running = running;
        emit runningChanged(running);
    }
    void changeSubjectArea() { emit subjectAreaDidChange(); }

    // What the device was asked.
    QStringList calls() const;
    void clearCalls();
    int startCount() const { return m_startCount; }
    /// The thread the last `startRunning` came from.
    QThread* startThread() const { return m_startThread; }

    QString id() const override { return QStringLiteral("fake"); }
    AuthorizationStatus authorizationStatus() const override { return m_authorization; }
    QFuture<bool> requestAccess() override;
    bool createSession() override { return m_failing != Failing::session; }
    bool findCamera() override { return m_failing != Failing::camera; }
    Kind kind() const override { return m_kind; }
    QList<float> switchOverZoomFactors() const override { return m_switchOverZoomFactors; }
    float minZoomFactor() const override { return m_minZoomFactor; }
    float maxZoomFactor() const override { return m_maxZoomFactor; }
    void createInput() override;
    bool canAddInput() const override { return m_failing != Failing::addInput; }
    bool canAddOutput() const override { return m_failing != Failing::addOutput; }
    void startRunning() override;
    bool isRunning() const override { return m_running; }
    bool lockForConfiguration(QString* error) override;
    void unlockForConfiguration() override { record(QStringLiteral("unlock")); }
    void setZoomFactor(float factor) override { record(QStringLiteral("zoom %1").arg(factor)); }
    void rampToZoomFactor(float factor, float rate) override
    {
        record(QStringLiteral("ramp %1 at %2").arg(factor).arg(rate));
    }
    void setContinuousAutoFocus() override { record(QStringLiteral("focus continuous")); }
    bool isExposurePointOfInterestSupported() const override { return m_pointOfInterestSupported; }
    bool isExposureModeSupported(ExposureMode) const override { return true; }
    void setExposurePointOfInterest(QPointF point) override;
    void setExposureMode(ExposureMode mode) override;
    void setSubjectAreaChangeMonitoringEnabled(bool enabled) override
    {
        record(enabled ? QStringLiteral("monitoring on") : QStringLiteral("monitoring off"));
    }
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
    Failing m_failing = Failing::nothing;
    Kind m_kind = Kind::wideAngle;
    QList<float> m_switchOverZoomFactors;
    float m_minZoomFactor = 1.0f;
    float m_maxZoomFactor = 100.0f;
    std::optional<QString> m_lockError;
    bool m_pointOfInterestSupported = true;
    Readouts m_readouts;

    bool m_running = false;
    std::atomic<int> m_startCount = 0;
    std::atomic<QThread*> m_startThread = nullptr;
    mutable QMutex m_callsMutex; // starting comes from the session queue
    QStringList m_calls;
};

} // namespace kestrum
