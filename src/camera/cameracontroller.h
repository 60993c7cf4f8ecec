#pragma once

#include "cameracontrollerprotocol.h"
#include "platform/camera/cameraframe.h"

#include <QList>
#include <QObject>
#include <QPromise>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <optional>

namespace kestrum {

class CaptureDevice;
class ImageMetadata;
class LightValueSubject;
class PhotoAlbum;

/// The live camera: the capture device's back camera turned into light values, zoom
/// presets, metering at a point, and logged photos.
///
/// The light value is computed from the device's own exposure read-outs:
/// LV = log2(N² / t) + offset − log2(S / 100), with N the f-number, t the exposure time,
/// S the ISO and offset the exposure target offset; 0 while the camera delivers no ISO
/// or no exposure time. `lv` passes only finite values that differ in their tenths.
///
/// Zoom presets follow the lenses: a single-lens camera offers one option titled 1; a
/// virtual camera offers its lens switch-over factors, shown halved when its factor 1 is
/// the ultra-wide lens. Every start of the session resets the zoom to the option
/// titled 1, and the shown zoom never exceeds 10.
///
/// Every frame goes to the frame consumer; after `logExposure()` the next frame is
/// written, with the metadata provider's properties, as the JPEG "Kestrum.jpeg" in the
/// temporary directory and saved to the photo album.
///
/// Lives on the main thread. Starting the session runs on the "capture session queue".
class CameraController : public QObject, public CameraControllerProtocol {
    Q_OBJECT
    Q_PROPERTY(bool sessionIsRunning READ sessionIsRunning NOTIFY sessionIsRunningChanged)
    Q_PROPERTY(QList<kestrum::ZoomOption> zoomOptions READ zoomOptions NOTIFY zoomOptionsChanged)
    Q_PROPERTY(std::optional<kestrum::ZoomOption> currentZoomOption READ currentZoomOption WRITE
                   setCurrentZoomOption NOTIFY currentZoomOptionChanged)
    Q_PROPERTY(float interactiveZoomFactor READ interactiveZoomFactor WRITE setInteractiveZoomFactor
                   NOTIFY interactiveZoomFactorChanged)
    Q_PROPERTY(kestrum::AuthorizationStatus authorizationStatus READ authorizationStatus NOTIFY
                   authorizationStatusChanged)

public:
    /// Receives every frame on the main thread; the app binds it to the face detector.
    using FrameConsumer = std::function<void(const CameraFrame&)>;
    /// The album logged photos go to, looked up when a photo is logged.
    using PhotoAlbumSource = std::function<PhotoAlbum*()>;

    static constexpr auto kSessionQueueName = "capture session queue";
    static constexpr auto kLockFailureText = "Could not lock device for configuration: ";

    /// `metadata` must outlive the controller; `frameConsumer` may be empty.
    CameraController(std::unique_ptr<CaptureDevice> device, PhotoAlbumSource photoAlbum,
                     const ImageMetadata& metadata, FrameConsumer frameConsumer,
                     QObject* parent = nullptr);
    ~CameraController() override;

    QList<ZoomOption> zoomOptions() const override { return m_zoomOptions; }
    float interactiveZoomFactor() const override { return m_interactiveZoomFactor; }
    void setInteractiveZoomFactor(float factor) override;
    std::optional<ZoomOption> currentZoomOption() const override { return m_currentZoomOption; }
    void setCurrentZoomOption(const std::optional<ZoomOption>& option) override;
    void incrementZoom() override;
    void decrementZoom() override;
    void commitInteractiveZoom() override;

    AuthorizationStatus authorizationStatus() const override { return m_authorizationStatus; }
    /// The capture device once a session exists: the preview shows its frames.
    QObject* session() const override;
    bool sessionIsRunning() const override { return m_sessionIsRunning; }
    void requestPermission() override;
    /// Builds and starts the pipeline. Throws CameraControllerException, or the device's
    /// CaptureDeviceException when the camera cannot be opened.
    void setUp() override;

    void measure() override;
    QFuture<void> logExposure() override;
    /// Stops the program when called before a successful set-up.
    void expose(QPointF point, ExposureMode mode, bool monitorSubjectAreaChange) override;

    MetadataProvider getMetadata() const override { return m_getMetadata; }
    void setGetMetadata(MetadataProvider provider) override;
    LightValueStream lv() const override;

    /// The device factor `factor` kept within the device's range and a shown zoom of 10.
    float clampZoomFactor(float factor) const;

signals:
    void objectWillChange();
    void sessionIsRunningChanged();
    void zoomOptionsChanged();
    void currentZoomOptionChanged();
    void interactiveZoomFactorChanged();
    void authorizationStatusChanged();

private:
    void setSessionIsRunning(bool running);
    void sessionRunningChanged(bool running);
    void setAuthorizationStatus(AuthorizationStatus status);
    void setZoomOptions(QList<ZoomOption> options);
    void publishCurrentZoomOption(const std::optional<ZoomOption>& option);
    void applyZoomFactor(float factor, bool ramp);
    void stepZoom(float direction);
    void subjectAreaDidChange();
    void frameArrived(const CameraFrame& frame);
    void capture(const CameraFrame& frame);
    /// Runs `change` between locking and unlocking the camera; reports a failed lock.
    void configure(const std::function<void(CaptureDevice&)>& change);

    std::unique_ptr<CaptureDevice> m_device;
    PhotoAlbumSource m_photoAlbum;
    const ImageMetadata& m_metadata;
    FrameConsumer m_frameConsumer;

    bool m_sessionIsRunning = false;
    QList<ZoomOption> m_zoomOptions;
    std::optional<ZoomOption> m_currentZoomOption;
    float m_interactiveZoomFactor = 1.0f;
    AuthorizationStatus m_authorizationStatus;

    std::optional<ZoomOption> m_currentlyEditingZoomOption;
    std::optional<float> m_minAvailableVideoZoomFactor;
    std::optional<float> m_maxAvailableVideoZoomFactor;
    bool m_needsToDivideZoomFactorByTwoBecauseOfUltrawideLens = false;
    LightValueSubject* m_lvPublisher; // owned as a child
    MetadataProvider m_getMetadata;
    bool m_hasSession = false;
    CaptureDevice* m_camera = nullptr; // the device, once set up
    bool m_needsCapture = false;
    std::shared_ptr<QPromise<void>> m_captureContinuation;
    // Callers replaced by a later call before a frame came: never resumed.
    QList<std::shared_ptr<QPromise<void>>> m_abandonedCaptures;

    // Declared last so that they drain before the device goes. Each is waited for on
    // destruction: a task hands its result to this object's thread as it ends, and that
    // hand-over must not outlive the object.
    QThreadPool m_sessionQueue;
    QThreadPool m_captureWriter;
};

} // namespace kestrum
