#include "cameracontroller.h"

#include "cameracontrollererror.h"
#include "lightvaluesubject.h"

#include "album/photoalbum.h"
#include "exposure/lightvalue.h"
#include "platform/camera/capturedevice.h"
#include "platform/photos/imagemetadata.h"
#include "platform/photos/loggedphotofile.h"

#include <QDir>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QPointer>
#include <QTemporaryDir>
#include <QUrl>

#include <algorithm>
#include <cmath>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcCamera, "kestrum.camera")

// The shown zoom never exceeds 10; where shown numbers are halved that is device factor 20.
constexpr float kMaxZoomFactor = 10.0f;
constexpr float kMaxUltraWideZoomFactor = 20.0f;
// One step of incrementZoom/decrementZoom is 0.1 shown zoom.
constexpr float kZoomStep = 0.1f;
constexpr float kUltraWideZoomStep = 0.2f;
// Zoom presets ramp at this many powers of two per second.
constexpr float kZoomRampRate = 6.0f;
constexpr auto kOneTimesTitle = u"1";

bool isVirtual(CaptureDevice::Kind kind)
{
    return kind == CaptureDevice::Kind::triple || kind == CaptureDevice::Kind::dual ||
           kind == CaptureDevice::Kind::dualWide;
}

// Cameras that start at the ultra-wide lens: their factor 1 is what users know as 0.5×.
bool startsAtUltraWide(CaptureDevice::Kind kind)
{
    return kind == CaptureDevice::Kind::triple || kind == CaptureDevice::Kind::dualWide;
}

QList<ZoomOption> makeZoomOptions(const QList<float>& factors, bool halve)
{
    QList<ZoomOption> options;
    for (float factor : factors)
        options.append(ZoomOption::make(factor, halve));
    return options;
}

// The light value of the camera's own exposure and exposure target offset; nothing while
// it delivers no ISO above 0 or no exposure time.
std::optional<double> cameraLightValue(const CaptureDevice& camera)
{
    const std::optional<float> iso = camera.iso();
    const std::optional<float> duration = camera.exposureDurationS();
    const std::optional<float> aperture = camera.lensAperture();
    if (!iso || !(*iso > 0) || !duration || !aperture)
        return std::nullopt;
    return kestrum::lightValue(*aperture, *duration, *iso,
                               camera.exposureTargetOffsetEV().value_or(0.0f));
}

// `properties` with the frame's orientation marked, so that viewers turn the sensor's
// image upright.
ImageProperties withOrientation(ImageProperties properties, CameraFrame::Orientation orientation)
{
    QVariantMap tiff = properties.value(imageproperty::kTIFFDictionary).toMap();
    tiff.insert(imageproperty::kOrientation, CameraFrame::exifOrientation(orientation));
    properties.insert(imageproperty::kTIFFDictionary, tiff);
    return properties;
}

// Writes the logged photo's file into `directory`; nothing, with the reason logged, when
// that fails.
std::optional<QString> writeCaptureFile(const QImage& image, const ImageProperties& properties,
                                        const ImageMetadata& metadata,
                                        const QTemporaryDir& directory)
{
    if (!directory.isValid()) {
        qCWarning(lcCamera) << "Capture failed:" << directory.errorString();
        return std::nullopt;
    }
    try {
        return writeLoggedPhotoFile(image, properties, metadata, directory.path());
    } catch (const LoggedPhotoFileException& error) {
        qCWarning(lcCamera) << "Capture failed:" << error.what();
        return std::nullopt;
    }
}

template <typename T> QFuture<T> failure(std::exception_ptr error)
{
    QPromise<T> promise;
    promise.start();
    promise.setException(error);
    promise.finish();
    return promise.future();
}

} // namespace

CameraController::CameraController(std::unique_ptr<CaptureDevice> device,
                                   PhotoAlbumSource photoAlbum, const ImageMetadata& metadata,
                                   FrameConsumer frameConsumer, QObject* parent)
    : QObject(parent)
    , m_device(std::move(device))
    , m_photoAlbum(std::move(photoAlbum))
    , m_metadata(metadata)
    , m_frameConsumer(std::move(frameConsumer))
    , m_authorizationStatus(m_device->authorizationStatus())
    , m_lvPublisher(new LightValueSubject(0.0, this))
{
    m_sessionQueue.setObjectName(QLatin1String(kSessionQueueName));
    m_sessionQueue.setMaxThreadCount(1);
    connect(m_device.get(), &CaptureDevice::subjectAreaDidChange, this,
            &CameraController::subjectAreaDidChange);
    // Access may have been changed elsewhere while the app was in the background.
    if (auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        connect(app, &QGuiApplication::applicationStateChanged, this,
                [this](Qt::ApplicationState state) {
                    if (state == Qt::ApplicationActive)
                        setAuthorizationStatus(m_device->authorizationStatus());
                });
    }
}

CameraController::~CameraController()
{
    m_sessionQueue.waitForDone();
    m_captureWriter.waitForDone();
}

QObject* CameraController::session() const
{
    return m_hasSession ? m_device.get() : nullptr;
}

void CameraController::setUp()
{
    CaptureDevice& device = *m_device;
    if (!device.createSession())
        throw CameraControllerException(CameraControllerError::sessionCantBeCreated);
    m_hasSession = true;
    if (!device.findCamera())
        throw CameraControllerException(CameraControllerError::noCameraDevice);

    m_minAvailableVideoZoomFactor = device.minZoomFactor();
    m_maxAvailableVideoZoomFactor = device.maxZoomFactor();
    if (!isVirtual(device.kind())) {
        m_needsToDivideZoomFactorByTwoBecauseOfUltrawideLens = false;
        setZoomOptions({ZoomOption::make(1.0f, false)});
    } else {
        m_needsToDivideZoomFactorByTwoBecauseOfUltrawideLens = startsAtUltraWide(device.kind());
        setZoomOptions(makeZoomOptions(QList<float>{1.0f} + device.switchOverZoomFactors(),
                                       m_needsToDivideZoomFactorByTwoBecauseOfUltrawideLens));
    }

    device.createInput(); // the platform's reason propagates as it is

    configure([](CaptureDevice& camera) {
        camera.setContinuousAutoFocus();
        camera.setExposureMode(ExposureMode::continuousAutoExposure);
    });

    connect(&device, &CaptureDevice::runningChanged, this, &CameraController::sessionRunningChanged,
            Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));

    if (!device.canAddInput())
        throw CameraControllerException(CameraControllerError::inputCantBeAdded);
    if (!device.canAddOutput())
        throw CameraControllerException(CameraControllerError::outputCantBeAdded);
    connect(&device, &CaptureDevice::frameArrived, this, &CameraController::frameArrived,
            Qt::UniqueConnection);

    m_sessionQueue.start([camera = &device] { camera->startRunning(); });
    m_camera = &device;
}

void CameraController::sessionRunningChanged(bool running)
{
    setSessionIsRunning(running);
    if (!running || m_zoomOptions.isEmpty())
        return;
    const auto one =
        std::find_if(m_zoomOptions.cbegin(), m_zoomOptions.cend(),
                     [](const ZoomOption& option) { return option.title == kOneTimesTitle; });
    const ZoomOption option = one != m_zoomOptions.cend() ? *one : m_zoomOptions.first();
    // After what the session queue has pending, so that the zoom applies to a started camera.
    m_sessionQueue.start([this, option] {
        QMetaObject::invokeMethod(
            this, [this, option] { setCurrentZoomOption(option); }, Qt::QueuedConnection);
    });
}

void CameraController::setSessionIsRunning(bool running)
{
    emit objectWillChange();
    const bool changed = running != m_sessionIsRunning;
    m_sessionIsRunning = running;
    if (changed)
        emit sessionIsRunningChanged();
}

void CameraController::setAuthorizationStatus(AuthorizationStatus status)
{
    emit objectWillChange();
    const bool changed = status != m_authorizationStatus;
    m_authorizationStatus = status;
    if (changed)
        emit authorizationStatusChanged();
}

void CameraController::setZoomOptions(QList<ZoomOption> options)
{
    emit objectWillChange();
    m_zoomOptions = std::move(options);
    emit zoomOptionsChanged();
}

void CameraController::publishCurrentZoomOption(const std::optional<ZoomOption>& option)
{
    emit objectWillChange();
    m_currentZoomOption = option;
    emit currentZoomOptionChanged();
}

void CameraController::setCurrentZoomOption(const std::optional<ZoomOption>& option)
{
    publishCurrentZoomOption(option);
    if (option)
        applyZoomFactor(option->factor, !m_currentlyEditingZoomOption.has_value());
}

void CameraController::applyZoomFactor(float factor, bool ramp)
{
    if (!m_camera)
        return;
    configure([factor, ramp](CaptureDevice& camera) {
        if (ramp)
            camera.rampToZoomFactor(factor, kZoomRampRate);
        else
            camera.setZoomFactor(factor);
    });
}

float CameraController::clampZoomFactor(float factor) const
{
    const float lower = m_minAvailableVideoZoomFactor.value_or(
        m_zoomOptions.isEmpty() ? factor : m_zoomOptions.first().factor);
    float clamped = std::max(lower, factor);
    clamped = std::min(clamped, m_maxAvailableVideoZoomFactor.value_or(kMaxZoomFactor));
    return std::min(clamped, m_needsToDivideZoomFactorByTwoBecauseOfUltrawideLens
                                 ? kMaxUltraWideZoomFactor
                                 : kMaxZoomFactor);
}

void CameraController::stepZoom(float direction)
{
    if (!m_currentZoomOption)
        return;
    const bool halve = m_needsToDivideZoomFactorByTwoBecauseOfUltrawideLens;
    const float step = halve ? kUltraWideZoomStep : kZoomStep;
    const float factor = clampZoomFactor(m_currentZoomOption->factor + direction * step);
    setCurrentZoomOption(ZoomOption::make(factor, halve));
}

void CameraController::incrementZoom()
{
    stepZoom(+1.0f);
}

void CameraController::decrementZoom()
{
    stepZoom(-1.0f);
}

void CameraController::setInteractiveZoomFactor(float factor)
{
    if (m_interactiveZoomFactor == 1.0f) // a pinch begins
        m_currentlyEditingZoomOption = m_currentZoomOption;
    emit objectWillChange();
    const bool changed = factor != m_interactiveZoomFactor;
    m_interactiveZoomFactor = factor;
    if (changed)
        emit interactiveZoomFactorChanged();
    if (!m_currentlyEditingZoomOption)
        return;
    const float zoom = clampZoomFactor(factor * m_currentlyEditingZoomOption->factor);
    setCurrentZoomOption(
        ZoomOption::make(zoom, m_needsToDivideZoomFactorByTwoBecauseOfUltrawideLens));
}

void CameraController::commitInteractiveZoom()
{
    m_currentlyEditingZoomOption.reset();
    setInteractiveZoomFactor(1.0f);
}

void CameraController::requestPermission()
{
    m_device->requestAccess().then(this, [this](bool granted) {
        setAuthorizationStatus(granted ? AuthorizationStatus::authorized
                                       : AuthorizationStatus::denied);
    });
}

void CameraController::configure(const std::function<void(CaptureDevice&)>& change)
{
    QString error;
    if (!m_device->lockForConfiguration(&error)) {
        qCWarning(lcCamera).noquote() << QLatin1String(kLockFailureText) + error;
        return;
    }
    change(*m_device);
    m_device->unlockForConfiguration();
}

void CameraController::expose(QPointF point, ExposureMode mode, bool monitorSubjectAreaChange)
{
    if (!m_camera)
        qFatal("The camera was asked to meter at a point before it was set up");
    configure([&](CaptureDevice& camera) {
        if (camera.isExposurePointOfInterestSupported() && camera.isExposureModeSupported(mode)) {
            camera.setExposurePointOfInterest(point);
            camera.setExposureMode(mode);
        }
        camera.setSubjectAreaChangeMonitoringEnabled(monitorSubjectAreaChange);
    });
    measure();
}

void CameraController::subjectAreaDidChange()
{
    if (!m_camera)
        return;
    // Back to following the scene; the point of interest stays where it was.
    configure([](CaptureDevice& camera) {
        camera.setExposureMode(ExposureMode::continuousAutoExposure);
    });
}

void CameraController::measure()
{
    const std::optional<double> value = m_camera ? cameraLightValue(*m_camera) : std::nullopt;
    m_lvPublisher->send(value.value_or(0.0));
}

LightValueStream CameraController::lv() const
{
    return {m_lvPublisher, LightValueStream::Filter::finiteDistinctTenths};
}

void CameraController::setGetMetadata(MetadataProvider provider)
{
    m_getMetadata = std::move(provider);
}

void CameraController::frameArrived(const CameraFrame& frame)
{
    if (m_frameConsumer)
        m_frameConsumer(frame);
    if (m_needsCapture) {
        m_needsCapture = false;
        capture(frame);
    }
}

QFuture<void> CameraController::logExposure()
{
    PhotoAlbum* album = m_photoAlbum ? m_photoAlbum() : nullptr;
    if (!album) {
        qCWarning(lcCamera) << "No photo album to log into";
        return failure<void>(
            std::make_exception_ptr(CameraControllerException(CameraControllerError::unknown)));
    }
    return album->checkAuthorization()
        .then(this,
              [this] {
                  // A caller still waiting for a frame is replaced; it is never resumed.
                  m_abandonedCaptures.removeIf(
                      [](const auto& promise) { return promise->future().isFinished(); });
                  if (m_captureContinuation)
                      m_abandonedCaptures.append(std::move(m_captureContinuation));
                  m_captureContinuation = std::make_shared<QPromise<void>>();
                  m_captureContinuation->start();
                  m_needsCapture = true;
                  return m_captureContinuation->future();
              })
        .unwrap();
}

void CameraController::capture(const CameraFrame& frame)
{
    const std::shared_ptr<QPromise<void>> continuation = m_captureContinuation;
    if (!continuation)
        return;
    const QPointer<PhotoAlbum> album = m_photoAlbum ? m_photoAlbum() : nullptr;
    const ImageMetadata* metadata = &m_metadata;
    QFuture<QVariantMap> properties =
        m_getMetadata ? m_getMetadata() : QtFuture::makeReadyFuture(QVariantMap());
    // Each photo gets a folder of its own until the album has its copy: two photos logged
    // in quick succession must not write over each other's file.
    const auto directory =
        std::make_shared<QTemporaryDir>(QDir::temp().filePath(QStringLiteral("kestrum-XXXXXX")));
    properties
        .then(&m_captureWriter,
              [image = frame.image, orientation = frame.orientation, metadata,
               directory](const QVariantMap& properties) {
                  return writeCaptureFile(image, withOrientation(properties, orientation),
                                          *metadata, *directory);
              })
        .then(this,
              [album](const std::optional<QString>& path) {
                  if (!path)
                      throw CameraControllerException(CameraControllerError::captureFailed);
                  if (!album)
                      throw CameraControllerException(CameraControllerError::unknown);
                  return album->save(QUrl::fromLocalFile(*path));
              })
        .unwrap()
        .then(this, [this, continuation, directory](QFuture<QString> saved) {
            try {
                saved.waitForFinished();
                if (saved.isCanceled())
                    throw CameraControllerException(CameraControllerError::captureFailed);
            } catch (...) {
                continuation->setException(std::current_exception());
            }
            continuation->finish();
            if (m_captureContinuation == continuation)
                m_captureContinuation.reset();
        });
}

} // namespace kestrum
