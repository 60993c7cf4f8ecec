#pragma once

#include "authorizationstatus.h"
#include "cameraframe.h"
#include "exposuremode.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QPointF>
#include <QString>

#include <exception>
#include <optional>
#include <string>

namespace kestrum {

/// The back camera of the device and the capture pipeline behind it: what the camera
/// controller configures, reads and receives frames from.
///
/// Set-up runs in this order, each step failing on its own: `createSession`,
/// `findCamera`, `createInput`, `canAddInput`, `canAddOutput`, then `startRunning`.
/// The description of the camera (`kind`, zoom range, switch-over factors) holds once
/// `findCamera` succeeded.
///
/// Configuration changes (zoom, focus, exposure) are made between
/// `lockForConfiguration` and `unlockForConfiguration`.
///
/// A device reports what it can tell and nothing more: one that cannot zoom offers the
/// range 1…1, one that does not meter its own frames reports no exposure target offset,
/// one without an ISO read-out reports its sensor gain instead, if it can.
///
/// Lives on the main thread; `startRunning` may be called from any thread. Signals are
/// emitted on the main thread.
/// The raw gain of a sensor, in the device's own units, for cameras that report gain
/// instead of an ISO speed; any part may be unknown.
struct SensorGain {
    std::optional<qint32> value;
    std::optional<qint32> minimum;
    std::optional<qint32> maximum;

    friend bool operator==(const SensorGain&, const SensorGain&) = default;
};

class CaptureDevice : public QObject {
    Q_OBJECT

public:
    /// What the camera is built of: one lens, or several lenses behind one virtual device.
    enum class Kind {
        wideAngle,
        telephoto,
        dual,     ///< wide and telephoto
        dualWide, ///< ultra-wide and wide
        triple,   ///< ultra-wide, wide and telephoto
    };

    using QObject::QObject;

    /// A stable name of the camera, for per-camera preferences; empty before `findCamera`.
    virtual QString id() const = 0;

    virtual AuthorizationStatus authorizationStatus() const = 0;
    /// Asks for access to the camera; yields whether it was granted.
    virtual QFuture<bool> requestAccess() = 0;

    /// Prepares the capture session; false when the platform cannot make one.
    virtual bool createSession() = 0;
    /// Finds the back camera; false when the device has none.
    virtual bool findCamera() = 0;
    virtual Kind kind() const = 0;
    /// The zoom factors at which a virtual camera changes lens, in its order.
    virtual QList<float> switchOverZoomFactors() const = 0;
    virtual float minZoomFactor() const = 0;
    virtual float maxZoomFactor() const = 0;
    /// Opens the camera as the session's input; throws CaptureDeviceException with the
    /// platform's reason when it cannot.
    virtual void createInput() = 0;
    virtual bool canAddInput() const = 0;
    virtual bool canAddOutput() const = 0;
    /// Connects input and output and starts delivering frames. Safe from any thread;
    /// `runningChanged` follows.
    virtual void startRunning() = 0;
    virtual bool isRunning() const = 0;

    /// Takes the camera for configuration; false with the reason in `error` when it
    /// cannot be taken.
    virtual bool lockForConfiguration(QString* error) = 0;
    virtual void unlockForConfiguration() = 0;
    virtual void setZoomFactor(float factor) = 0;
    /// Moves to `factor` smoothly, at `rate` powers of two per second.
    virtual void rampToZoomFactor(float factor, float rate) = 0;
    virtual void setContinuousAutoFocus() = 0;
    virtual bool isExposurePointOfInterestSupported() const = 0;
    virtual bool isExposureModeSupported(ExposureMode mode) const = 0;
    /// The point to meter at, 0…1 on each axis of the frame.
    virtual void setExposurePointOfInterest(QPointF point) = 0;
    virtual void setExposureMode(ExposureMode mode) = 0;
    /// Whether `subjectAreaDidChange` is sent when the scene changes a lot.
    virtual void setSubjectAreaChangeMonitoringEnabled(bool enabled) = 0;

    // The exposure the camera is using; nothing when it cannot tell (yet).
    virtual std::optional<float> iso() const = 0;
    virtual std::optional<float> exposureDurationS() const = 0;
    virtual std::optional<float> lensAperture() const = 0;
    /// How far the metered scene is from the exposure target, in stops; positive when it
    /// is brighter.
    virtual std::optional<float> exposureTargetOffsetEV() const = 0;
    /// The sensor's gain, for a device that has no ISO read-out; nothing otherwise.
    virtual std::optional<SensorGain> gain() const { return std::nullopt; }

signals:
    void frameArrived(const kestrum::CameraFrame& frame);
    void runningChanged(bool running);
    /// The scene changed a lot while monitoring was enabled.
    void subjectAreaDidChange();
};

/// The platform's reason why the camera could not be opened.
class CaptureDeviceException : public std::exception {
public:
    explicit CaptureDeviceException(const QString& reason)
        : m_reason(reason.toStdString())
    {}

    QString reason() const { return QString::fromStdString(m_reason); }
    const char* what() const noexcept override { return m_reason.c_str(); }

private:
    std::string m_reason;
};

} // namespace kestrum
