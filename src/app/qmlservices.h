#pragma once

#include <memory>

namespace kestrum {

class AnyCameraController;
class AppEnvironment;
class AppIcon;
class Clock;
class DesktopFacade;
class DesktopServices;
class Haptics;
class HapticsFacade;
class PreviewOverlays;
class CalculationController;
class CameraCalibrationFacade;
class CameraFacade;
class DependencyContainer;
class FaceDetector;
class FaceDetectorFacade;
class LocationManager;
class LoggedPhotoModel;
class MailComposer;
class MeterFacade;
class PhotoAlbum;
class PreferenceStore;
class SelfMeteringCamera;
class Settings;
class SettingsFacade;
class TileSource;
class WindowIcon;

/// The QML singletons (Meter, CameraController, FaceDetector, AppSettings, LoggedPhotos,
/// Haptics, Desktop, PreviewOverlays, CameraCalibration, AppEnvironment) and the maps'
/// tiles, made over the services they show and offered to every engine while this object
/// lives.
/// Make it before the engine loads its QML and destroy it after the engine is gone.
///
/// The app builds it from the dependency container (`registerQmlServices`); a test builds
/// it from fakes.
class QmlServices {
public:
    /// What the singletons show; everything must outlive this object.
    struct Sources {
        Settings& settings;
        PreferenceStore& preferenceStore;
        CalculationController& calculationController;
        AnyCameraController& cameraController;
        FaceDetector* faceDetector; ///< may be null
        PhotoAlbum& photoAlbum;
        LocationManager& locationManager;
        Haptics& haptics;
        DesktopServices& desktopServices;
        MailComposer& mailComposer;
        AppIcon& launcherIcon;
        WindowIcon& windowIcon;
        Clock& clock;                          ///< times the preview's overlays
        AppEnvironment* environment = nullptr; ///< the window's; may be null
        /// The live camera, whose calibration the settings show; null on the mock camera.
        SelfMeteringCamera* liveCamera = nullptr;
        TileSource* tileSource = nullptr; ///< every MapView's; may be null
    };

    explicit QmlServices(const Sources& sources);
    /// Withdraws the singletons.
    ~QmlServices();

    QmlServices(const QmlServices&) = delete;
    QmlServices& operator=(const QmlServices&) = delete;

private:
    std::unique_ptr<MeterFacade> m_meter;
    std::unique_ptr<CameraFacade> m_camera;
    std::unique_ptr<FaceDetectorFacade> m_faces;
    std::unique_ptr<SettingsFacade> m_settings;
    std::unique_ptr<LoggedPhotoModel> m_loggedPhotos;
    std::unique_ptr<HapticsFacade> m_haptics;
    std::unique_ptr<DesktopFacade> m_desktop;
    std::unique_ptr<PreviewOverlays> m_overlays;
    std::unique_ptr<CameraCalibrationFacade> m_calibration;
};

/// The QML singletons over the services of a filled container.
std::unique_ptr<QmlServices> registerQmlServices(const DependencyContainer& container);

} // namespace kestrum
