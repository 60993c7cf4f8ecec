#pragma once

#include <memory>

namespace kestrum {

class AnyCameraController;
class AppEnvironment;
class AppIcon;
class CalculationController;
class Calculator;
class Clock;
class DesktopServices;
class FaceDetector;
class Haptics;
class ImageMetadata;
class LocationManager;
class MailComposer;
class PhotoAlbum;
class PhotoLibrary;
class PreferenceStore;
class QuickActionShortcuts;
class SelfMeteringCamera;
class Settings;
class TileSource;
class UserDesktopEntry;
class WindowIcon;

/// The one process-wide owner of the app's long-lived services. The start-up fills
/// it once, in dependency order, and nothing is replaced afterwards; the QML singletons
/// are made over its services (`registerQmlServices`). Reading a service before it is
/// filled stops the program.
class DependencyContainer {
public:
    /// What the container owns, in the order it is built and the reverse order it is
    /// torn down: the platform's adapters, then the services of the start-up sequence.
    struct Services {
        std::unique_ptr<PreferenceStore> preferenceStore;
        std::unique_ptr<Clock> clock;
        std::unique_ptr<ImageMetadata> imageMetadata;
        std::unique_ptr<DesktopServices> desktopServices;
        std::unique_ptr<MailComposer> mailComposer;
        std::unique_ptr<Haptics> haptics;
        std::unique_ptr<UserDesktopEntry> userDesktopEntry;
        std::unique_ptr<WindowIcon> windowIcon;
        std::unique_ptr<AppEnvironment> environment;

        std::unique_ptr<Settings> settings;
        std::unique_ptr<LocationManager> locationManager;
        std::unique_ptr<TileSource> tileSource; ///< may be null
        std::unique_ptr<AnyCameraController> cameraController;
        /// The live camera's device, owned by the camera controller; null on mock data.
        SelfMeteringCamera* selfMeteringCamera = nullptr;
        std::unique_ptr<Calculator> calculator;
        std::unique_ptr<CalculationController> calculationController;
        std::unique_ptr<PhotoLibrary> photoLibrary;
        std::unique_ptr<PhotoAlbum> photoAlbum;
        std::unique_ptr<FaceDetector> faceDetector; ///< absent when no face model could be loaded
    };

    static DependencyContainer& shared();

    void fill(Services services);
    /// Tears the services down in reverse order of construction.
    void clear();

    PreferenceStore& preferenceStore() const;
    Settings& settings() const;
    AnyCameraController& cameraController() const;
    CalculationController& calculationController() const;
    LocationManager& locationManager() const;
    /// Where the maps' tiles come from; null when there is none.
    TileSource* tileSource() const { return m_services.tileSource.get(); }
    PhotoAlbum& photoAlbum() const;
    /// The face detector; null without a face model.
    FaceDetector* faceDetector() const { return m_services.faceDetector.get(); }
    Clock& clock() const;
    DesktopServices& desktopServices() const;
    MailComposer& mailComposer() const;
    Haptics& haptics() const;
    /// Where the launcher reads the quick actions from.
    QuickActionShortcuts& quickActionShortcuts() const;
    /// The icon the launcher shows.
    AppIcon& appIcon() const;
    /// The icon the window carries.
    WindowIcon& windowIcon() const;
    /// The live camera, whose calibration the settings show; null on mock data.
    SelfMeteringCamera* selfMeteringCamera() const { return m_services.selfMeteringCamera; }
    /// What the window tells its views: safe areas, and closing what is presented.
    AppEnvironment& environment() const;

private:
    DependencyContainer() = default;
    ~DependencyContainer();

    Services m_services;
};

} // namespace kestrum
