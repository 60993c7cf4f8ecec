#include "appstartup.h"

#include "album/locationmanager.h"
#include "album/loggedphotometadata.h"
#include "album/photoalbum.h"
#include "album/photoalbummock.h"
#include "app/dependencycontainer.h"
#include "camera/anycameracontroller.h"
#include "camera/cameracontroller.h"
#include "camera/cameracontrollererror.h"
#include "camera/facedetector.h"
#include "camera/mockcameracontroller.h"
#include "camera/selfmeteringcamera.h"
#include "exposure/calculationcontroller.h"
#include "platform/camera/capturedevice.h"
#include "platform/camera/capturedevicechoice.h"
#include "platform/camera/faceanalyseropencv.h"
#include "platform/desktop/xdgmailcomposer.h"
#include "platform/location/nominatimgeocoder.h"
#include "platform/location/positionsourcechoice.h"
#include "platform/location/qtpositionsource.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "platform/photos/folderphotolibrary.h"
#include "platform/store/inipreferencestore.h"
#include "platform/time/systemclock.h"
#include "settings/settings.h"

namespace kestrum {

namespace {
const QString kSimulatorModelVariable = QStringLiteral("SIMULATOR_MODEL_IDENTIFIER");
const QString kScreenshotRunKey = QStringLiteral("FASTLANE_SNAPSHOT");
std::unique_ptr<FaceDetector> makeFaceDetector()
{
    try {
        return std::make_unique<FaceDetector>(std::make_shared<FaceAnalyserOpenCv>());
    } catch (const std::exception& error) {
        qWarning("faces will not steer metering: %s", error.what());
        return nullptr;
    }
}

// A logged photo carries the exposure the meter shows when it is taken and, when a fix
// can be had, where it was taken.
void installMetadataProvider(AnyCameraController& camera, CalculationController& meter,
                             LocationManager& location)
{
    camera.setGetMetadata([&meter, &location] {
        const ISO iso = meter.iso();
        const Aperture aperture = meter.aperture();
        const ShutterSpeed speed = meter.speed();
        const Compensation compensation = meter.compensation();
        return location.currentLocation()
            .then(&meter,
                  [=](const std::optional<Location>& where) {
                      return loggedPhotoMetadata(iso, aperture, speed, compensation, where);
                  })
            .onFailed(&meter, [=] {
                return loggedPhotoMetadata(iso, aperture, speed, compensation, std::nullopt);
            });
    });
}

} // namespace

StartupOptions StartupOptions::fromEnvironment(const QStringList& arguments)
{
    StartupOptions options;
    options.launchArguments = arguments;
    if (qEnvironmentVariableIsSet(qPrintable(kSimulatorModelVariable)))
        options.simulatedModel = qEnvironmentVariable(qPrintable(kSimulatorModelVariable));
    return options;
}

void fillDependencies(DependencyContainer& container, const StartupOptions& options)
{
    DependencyContainer::Services services;
    services.preferenceStore =
        std::make_unique<IniPreferenceStore>(IniPreferenceStore::defaultFilePath());
    services.mailComposer = std::make_unique<XdgMailComposer>();
    services.clock = std::make_unique<SystemClock>();
    services.imageMetadata = std::make_unique<Exiv2ImageMetadata>();
    services.settings = std::make_unique<Settings>(*services.preferenceStore,
                                                   *services.mailComposer, options.launchArguments);
    Settings& settings = *services.settings;
    services.locationManager = std::make_unique<LocationManager>(
        std::make_unique<QtPositionSource>(PositionSourceChoice::fromEnvironment()),
        std::make_unique<NominatimGeocoder>(NominatimGeocoder::Options::fromEnvironment(),
                                            *services.clock));

    if (options.simulatedModel) {
        const bool screenshotRun =
            options.screenshotRun || services.preferenceStore->boolean(kScreenshotRunKey);
        services.cameraController =
            std::make_unique<AnyCameraController>(std::make_shared<MockCameraController>(
                AuthorizationStatus::authorized, options.simulatedModel, screenshotRun));
    } else {
        services.faceDetector = makeFaceDetector();
        FaceDetector* detector = services.faceDetector.get();
        CameraController::FrameConsumer frames;
        if (detector)
            frames = [detector](const CameraFrame& frame) { detector->process(frame); };
        // The album is made after the camera; the camera looks it up when it logs.
        auto camera = std::make_shared<CameraController>(
            std::make_unique<SelfMeteringCamera>(CaptureDeviceChoice::fromEnvironment().make(),
                                                 *services.preferenceStore),
            [&container] { return &container.photoAlbum(); }, *services.imageMetadata,
            std::move(frames));
        services.cameraController = std::make_unique<AnyCameraController>(camera);
    }

    services.calculator =
        std::make_unique<Calculator>([&settings] { return settings.currentProfileSettings(); });
    services.calculationController =
        std::make_unique<CalculationController>(*services.calculator, *services.cameraController,
                                                settings.currentProfileSettings(), *services.clock);
    CalculationController& controller = *services.calculationController;
    QObject::connect(
        &settings, &Settings::currentProfileSettingsChanged, &controller,
        [&settings, &controller] { controller.setSettings(settings.currentProfileSettings()); });

    if (!options.simulatedModel)
        installMetadataProvider(*services.cameraController, controller, *services.locationManager);

    services.photoLibrary = std::make_unique<FolderPhotoLibrary>(
        FolderPhotoLibrary::defaultRootPath(), *services.imageMetadata);
    if (options.simulatedModel) {
        services.photoAlbum =
            std::make_unique<PhotoAlbumMock>(*services.photoLibrary, *services.imageMetadata);
    } else {
        services.photoAlbum =
            std::make_unique<PhotoAlbum>(*services.photoLibrary, *services.imageMetadata);
    }

    container.fill(std::move(services));

    // The main screen sets the live camera up; until it exists, start it here.
    if (!options.simulatedModel) {
        AnyCameraController& camera = container.cameraController();
        if (camera.authorizationStatus() == AuthorizationStatus::notDetermined)
            camera.requestPermission();
        try {
            camera.setUp();
        } catch (const CameraControllerException& error) {
            qWarning("the camera could not be started: %s", error.what());
        } catch (const std::exception& error) {
            qWarning("the camera could not be started: %s", error.what());
        }
    }
}

} // namespace kestrum
