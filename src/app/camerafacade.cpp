#include "camerafacade.h"

#include "app/qmlsingleton.h"
#include "camera/anycameracontroller.h"
#include "camera/cameracontrollererror.h"
#include "platform/camera/capturedevice.h"
#include "platform/camera/previewvideoframe.h"

namespace kestrum {

namespace {

static_assert(int(CameraFacade::AuthorizationStatus::Authorized) ==
              int(kestrum::AuthorizationStatus::authorized));
static_assert(int(CameraFacade::Error::Unknown) == int(CameraControllerError::unknown) + 1);

CameraFacade::Error qmlError(CameraControllerError error)
{
    return CameraFacade::Error(int(error) + 1);
}

} // namespace

CameraFacade::CameraFacade(AnyCameraController& camera, QObject* parent)
    : QObject(parent)
    , m_camera(camera)
    , m_zoomOptions(new ZoomOptionModel(camera, this))
{
    connect(&camera, &AnyCameraController::objectWillChange, this, &CameraFacade::scheduleRefresh);
    refresh();
}

CameraFacade* CameraFacade::create(QQmlEngine*, QJSEngine*)
{
    return offeredSingleton(s_instance, "CameraController");
}

void CameraFacade::scheduleRefresh()
{
    m_refresh.schedule();
}

void CameraFacade::refresh()
{
    const auto status = AuthorizationStatus(int(m_camera.authorizationStatus()));
    if (status != m_authorizationStatus) {
        m_authorizationStatus = status;
        emit authorizationStatusChanged();
    }
    if (m_camera.sessionIsRunning() != m_sessionIsRunning) {
        m_sessionIsRunning = m_camera.sessionIsRunning();
        emit sessionIsRunningChanged();
    }
    if (m_camera.interactiveZoomFactor() != m_interactiveZoomFactor) {
        m_interactiveZoomFactor = m_camera.interactiveZoomFactor();
        emit interactiveZoomFactorChanged();
    }
    m_zoomOptions->refresh();
    followSession();
}

void CameraFacade::followSession()
{
    auto* session = qobject_cast<CaptureDevice*>(m_camera.session());
    if (session == m_session)
        return;
    disconnect(m_frameConnection);
    disconnect(m_subjectAreaConnection);
    const bool hadSession = m_session != nullptr;
    m_session = session;
    if (hadSession != (session != nullptr))
        emit hasSessionChanged();
    if (session) {
        m_frameConnection =
            connect(session, &CaptureDevice::frameArrived, this, &CameraFacade::present);
        m_subjectAreaConnection = connect(session, &CaptureDevice::subjectAreaDidChange, this,
                                          &CameraFacade::subjectAreaChanged);
    }
}

bool CameraFacade::hasSession() const
{
    return !m_session.isNull();
}

void CameraFacade::present(const CameraFrame& frame)
{
    if (m_videoSink)
        m_videoSink->setVideoFrame(previewVideoFrame(frame));
}

void CameraFacade::setVideoSink(QVideoSink* sink)
{
    if (sink == m_videoSink)
        return;
    m_videoSink = sink;
    emit videoSinkChanged();
}

void CameraFacade::setInteractiveZoomFactor(float factor)
{
    m_camera.setInteractiveZoomFactor(factor);
    refresh();
}

void CameraFacade::requestPermission()
{
    m_camera.requestPermission();
    refresh();
}

bool CameraFacade::setUp()
{
    bool succeeded = false;
    try {
        m_camera.setUp();
        setSetUpError(Error::NoError, QString());
        succeeded = true;
    } catch (const CameraControllerException& error) {
        setSetUpError(qmlError(error.error()), error.errorDescription());
    } catch (const std::exception& error) {
        qWarning("the camera could not be set up: %s", error.what());
    }
    refresh();
    return succeeded;
}

void CameraFacade::setSetUpError(Error error, const QString& text)
{
    if (error == m_setUpError && text == m_setUpErrorText)
        return;
    m_setUpError = error;
    m_setUpErrorText = text;
    emit setUpErrorChanged();
}

void CameraFacade::measure()
{
    m_camera.measure();
}

void CameraFacade::commitInteractiveZoom()
{
    m_camera.commitInteractiveZoom();
    refresh();
}

void CameraFacade::incrementZoom()
{
    m_camera.incrementZoom();
    refresh();
}

void CameraFacade::decrementZoom()
{
    m_camera.decrementZoom();
    refresh();
}

void CameraFacade::expose(QPointF point, bool monitorSubjectAreaChange)
{
    m_camera.expose(point, ExposureMode::autoExpose, monitorSubjectAreaChange);
}

void CameraFacade::logExposure()
{
    m_camera.logExposure()
        .then(this, [this] { emit exposureLogged(true, QString()); })
        .onFailed(this,
                  [this](const CameraControllerException& error) {
                      emit exposureLogged(false, error.errorDescription());
                  })
        .onFailed(this,
                  [this](const std::exception& error) {
                      emit exposureLogged(false, QString::fromUtf8(error.what()));
                  })
        .onFailed(this, [this] { emit exposureLogged(false, QString()); });
}

} // namespace kestrum
