#pragma once

#include "app/coalescedcall.h"

#include "app/zoomoptionmodel.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QVideoSink>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class AnyCameraController;
class CaptureDevice;
struct CameraFrame;

/// The camera as the screens see it (`CameraController`): permission, set-up, zoom,
/// metering at a point, logging, and the preview's frames.
///
/// The preview: the QML hands over the sink of its VideoOutput (`videoSink:
/// preview.videoSink`) and every frame of the camera's capture session is shown there,
/// turned upright. A camera without a session (the mock camera) shows nothing.
///
/// The controller announces changes before it makes them; the facade reads them back
/// once they are made, on the event loop, and right away after its own writes.
class CameraFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(CameraController)
    QML_SINGLETON
    Q_PROPERTY(kestrum::CameraFacade::AuthorizationStatus authorizationStatus READ
                   authorizationStatus NOTIFY authorizationStatusChanged)
    Q_PROPERTY(bool sessionIsRunning READ sessionIsRunning NOTIFY sessionIsRunningChanged)
    Q_PROPERTY(kestrum::ZoomOptionModel* zoomOptions READ zoomOptions CONSTANT)
    Q_PROPERTY(float interactiveZoomFactor READ interactiveZoomFactor WRITE setInteractiveZoomFactor
                   NOTIFY interactiveZoomFactorChanged)
    Q_PROPERTY(kestrum::CameraFacade::Error setUpError READ setUpError NOTIFY setUpErrorChanged)
    Q_PROPERTY(QString setUpErrorText READ setUpErrorText NOTIFY setUpErrorChanged)
    /// Whether the camera has a capture session whose frames the preview shows; the mock
    /// camera has none, and the preview shows its still picture instead.
    Q_PROPERTY(bool hasSession READ hasSession NOTIFY hasSessionChanged)
    Q_PROPERTY(QVideoSink* videoSink READ videoSink WRITE setVideoSink NOTIFY videoSinkChanged)

public:
    /// Whether the app may use the camera; `Authorized` is 3.
    enum class AuthorizationStatus { NotDetermined, Restricted, Denied, Authorized };
    Q_ENUM(AuthorizationStatus)

    /// Why the camera could not be set up or could not capture.
    enum class Error {
        NoError,
        SessionCantBeCreated,
        NoCameraDevice,
        InputCantBeCreated,
        InputCantBeAdded,
        OutputCantBeAdded,
        CaptureFailed,
        Unknown,
    };
    Q_ENUM(Error)

    explicit CameraFacade(AnyCameraController& camera, QObject* parent = nullptr);

    static CameraFacade* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(CameraFacade* instance) { s_instance = instance; }

    AuthorizationStatus authorizationStatus() const { return m_authorizationStatus; }
    bool sessionIsRunning() const { return m_sessionIsRunning; }
    ZoomOptionModel* zoomOptions() const { return m_zoomOptions; }
    /// The pinch's multiplier over the option current when it began; 1 otherwise.
    float interactiveZoomFactor() const { return m_interactiveZoomFactor; }
    void setInteractiveZoomFactor(float factor);
    /// The error of the last `setUp()`; `NoError` after a successful one.
    Error setUpError() const { return m_setUpError; }
    /// The text the error alert shows for `setUpError`; empty without an error.
    QString setUpErrorText() const { return m_setUpErrorText; }
    bool hasSession() const;
    QVideoSink* videoSink() const { return m_videoSink; }
    void setVideoSink(QVideoSink* sink);

    /// Asks for camera access; the answer arrives through `authorizationStatus`.
    Q_INVOKABLE void requestPermission();
    /// Builds and starts the capture pipeline; false, with `setUpError` set, when the
    /// camera failed. Other failures are only logged.
    Q_INVOKABLE bool setUp();
    /// Takes one light-value reading now.
    Q_INVOKABLE void measure();
    /// Ends a pinch: the interactive factor becomes part of the current option.
    Q_INVOKABLE void commitInteractiveZoom();
    Q_INVOKABLE void incrementZoom();
    Q_INVOKABLE void decrementZoom();
    /// Meters once at `point` (0…1 on each axis of the capture device, as the preview
    /// maps a tap or a face onto it) and holds there. With `monitorSubjectAreaChange` (a
    /// tap) the camera returns to following the scene when the scene changes; a face
    /// meters without it. The live camera must have been set up: before that, metering at
    /// a point stops the program.
    Q_INVOKABLE void expose(QPointF point, bool monitorSubjectAreaChange = true);
    /// Logs the next frame as a photo; `exposureLogged` tells how it went. A log replaced
    /// by a later one before a frame came never reports.
    Q_INVOKABLE void logExposure();

signals:
    void authorizationStatusChanged();
    void sessionIsRunningChanged();
    void interactiveZoomFactorChanged();
    void setUpErrorChanged();
    void videoSinkChanged();
    void hasSessionChanged();
    /// The camera went back to following the scene after metering at a point.
    void subjectAreaChanged();
    /// The end of a `logExposure()`: the photo is in the album, or `errorText` says why not.
    void exposureLogged(bool success, const QString& errorText);

private:
    void scheduleRefresh();
    void refresh();
    void followSession();
    void present(const CameraFrame& frame);
    void setSetUpError(Error error, const QString& text);

    static inline CameraFacade* s_instance = nullptr;

    AnyCameraController& m_camera;
    ZoomOptionModel* m_zoomOptions;
    AuthorizationStatus m_authorizationStatus = AuthorizationStatus::NotDetermined;
    bool m_sessionIsRunning = false;
    float m_interactiveZoomFactor = 1.0f;
    Error m_setUpError = Error::NoError;
    QString m_setUpErrorText;
    QPointer<QVideoSink> m_videoSink;
    QPointer<CaptureDevice> m_session;
    QMetaObject::Connection m_frameConnection;
    QMetaObject::Connection m_subjectAreaConnection;
    CoalescedCall m_refresh{this, [this] { refresh(); }};
};

} // namespace kestrum
