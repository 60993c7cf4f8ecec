#include "qtcapturedevice.h"

#include "captureframequeue.h"
#include "v4l2controls.h"
#include "webcamcontrols.h"

#include <QCamera>
#include <QCameraDevice>
#include <QLoggingCategory>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QRegularExpression>
#include <QVideoFrame>
#include <QVideoSink>

#include <linux/videodev2.h>

#include <cerrno>
#include <unistd.h>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcCapture, "kestrum.platform.camera")

QCameraDevice chosenCamera()
{
    const QList<QCameraDevice> cameras = QMediaDevices::videoInputs();
    for (const QCameraDevice& camera : cameras) {
        if (camera.position() == QCameraDevice::BackFace)
            return camera;
    }
    return QMediaDevices::defaultVideoInput();
}

// A preference-key friendly name of the camera model: lower case, words joined by "-".
QString preferenceId(const QCameraDevice& camera)
{
    static const QRegularExpression kNotAlphanumeric(QStringLiteral("[^a-z0-9]+"));
    QString id = camera.description().toLower().replace(kNotAlphanumeric, QStringLiteral("-"));
    while (id.startsWith(u'-'))
        id.remove(0, 1);
    while (id.endsWith(u'-'))
        id.chop(1);
    return id.isEmpty() ? QStringLiteral("camera") : id;
}

} // namespace

QtCaptureDevice::QtCaptureDevice(QObject* parent)
    : FixedLensCaptureDevice(parent)
{}

QtCaptureDevice::~QtCaptureDevice()
{
    if (m_camera)
        m_camera->stop();
}

AuthorizationStatus QtCaptureDevice::authorizationStatus() const
{
    const QByteArray node = m_cameraId.isEmpty() ? chosenCamera().id() : m_cameraId;
    if (node.isEmpty() || ::access(node.constData(), R_OK | W_OK) == 0)
        return AuthorizationStatus::authorized;
    return errno == EACCES ? AuthorizationStatus::denied : AuthorizationStatus::authorized;
}

QFuture<bool> QtCaptureDevice::requestAccess()
{
    // Access to a video node is a matter of group membership: nobody can be asked.
    return QtFuture::makeReadyFuture(authorizationStatus() == AuthorizationStatus::authorized);
}

bool QtCaptureDevice::createSession()
{
    m_session = new QMediaCaptureSession(this);
    m_sink = new QVideoSink(this);
    return true;
}

bool QtCaptureDevice::findCamera()
{
    const QCameraDevice camera = chosenCamera();
    if (camera.isNull())
        return false;
    m_cameraId = camera.id();
    m_id = preferenceId(camera);
    return true;
}

void QtCaptureDevice::createInput()
{
    m_controls = std::make_unique<V4l2Controls>(QString::fromLocal8Bit(m_cameraId));
    if (m_controls->isAccessDenied())
        throw CaptureDeviceException(m_controls->errorText());
    if (!m_controls->isOpen())
        qCWarning(lcCapture) << "No exposure controls:" << m_controls->errorText();

    QCameraDevice device;
    for (const QCameraDevice& camera : QMediaDevices::videoInputs()) {
        if (camera.id() == m_cameraId)
            device = camera;
    }
    if (device.isNull())
        throw CaptureDeviceException(QStringLiteral("The camera is gone."));
    m_camera = new QCamera(device, this);
    if (m_camera->error() != QCamera::NoError)
        throw CaptureDeviceException(m_camera->errorString());
    connect(m_camera, &QCamera::activeChanged, this, &QtCaptureDevice::setRunning);
    connect(m_camera, &QCamera::errorOccurred, this,
            [](QCamera::Error, const QString& text) { qCWarning(lcCapture) << text; });
    connect(m_sink, &QVideoSink::videoFrameChanged, &frames(), &CaptureFrameQueue::pushVideoFrame);
}

void QtCaptureDevice::startRunning()
{
    QMetaObject::invokeMethod(this, [this] { run(); });
}

void QtCaptureDevice::run()
{
    if (!m_camera)
        return;
    m_session->setCamera(m_camera);
    m_session->setVideoSink(m_sink);
    m_camera->start();
}

void QtCaptureDevice::setRunning(bool running)
{
    m_running = running;
    emit runningChanged(running);
}

bool QtCaptureDevice::lockForConfiguration(QString* error)
{
    if (m_camera)
        return true;
    *error = QStringLiteral("The camera is not open.");
    return false;
}

void QtCaptureDevice::setContinuousAutoFocus()
{
    if (m_controls && m_controls->range(V4L2_CID_FOCUS_AUTO))
        m_controls->setValue(V4L2_CID_FOCUS_AUTO, 1);
}

void QtCaptureDevice::setExposureMode(ExposureMode mode)
{
    if (!m_controls || !m_controls->isOpen())
        return;
    const std::optional<qint32> value =
        webcamcontrols::autoExposureEntry(mode, m_controls->menuEntries(V4L2_CID_EXPOSURE_AUTO));
    if (!value) {
        qCWarning(lcCapture) << "The camera has no exposure mode for" << int(mode);
        return;
    }
    if (!m_controls->setValue(V4L2_CID_EXPOSURE_AUTO, *value))
        qCWarning(lcCapture) << "Cannot set the exposure mode:" << m_controls->errorText();
}

std::optional<SensorGain> QtCaptureDevice::gain() const
{
    if (!m_camera)
        return std::nullopt;
    if (!m_controls)
        return SensorGain{};
    const std::optional<V4l2Controls::Range> range = m_controls->range(V4L2_CID_GAIN);
    return SensorGain{m_controls->value(V4L2_CID_GAIN),
                      range ? std::optional(range->minimum) : std::nullopt,
                      range ? std::optional(range->maximum) : std::nullopt};
}

std::optional<float> QtCaptureDevice::exposureDurationS() const
{
    if (!m_camera)
        return std::nullopt;
    if (m_controls) {
        if (const auto seconds = webcamcontrols::durationFromExposureUnits(
                m_controls->value(V4L2_CID_EXPOSURE_ABSOLUTE)))
            return seconds;
    }
    const float seconds = m_camera->exposureTime();
    return seconds > 0 ? std::optional(seconds) : std::nullopt;
}
} // namespace kestrum
