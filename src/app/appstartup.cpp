#include "appstartup.h"

#include "album/locationmanager.h"
#include "album/loggedphotometadata.h"
#include "album/photoalbum.h"
#include "album/photoalbummock.h"
#include "app/adapterfactory.h"
#include "app/appenvironment.h"
#include "app/dependencycontainer.h"
#include "camera/anycameracontroller.h"
#include "camera/cameracontroller.h"
#include "camera/cameracontrollererror.h"
#include "camera/facedetector.h"
#include "camera/mockcameracontroller.h"
#include "camera/selfmeteringcamera.h"
#include "exposure/calculationcontroller.h"
#include "platform/camera/capturedevice.h"
#include "platform/camera/faceanalyser.h"
#include "platform/desktop/desktopservices.h"
#include "platform/desktop/haptics.h"
#include "platform/desktop/mailcomposer.h"
#include "platform/desktop/userdesktopentry.h"
#include "platform/desktop/windowicon.h"
#include "platform/location/positionsource.h"
#include "platform/location/reversegeocoder.h"
#include "platform/map/tilesource.h"
#include "platform/photos/imagemetadata.h"
#include "platform/photos/photolibrary.h"
#include "platform/store/preferencestore.h"
#include "platform/time/clock.h"
#include "settings/settings.h"

namespace kestrum {

namespace {
const QString kSimulatorModelVariable = QStringLiteral("SIMULATOR_MODEL_IDENTIFIER");
const QString kScreenshotRunKey = QStringLiteral("FASTLANE_SNAPSHOT");

std::unique_ptr<FaceDetector> makeFaceDetector(AdapterFactory& adapters)
{
    try {
        return std::make_unique<FaceDetector>(adapters.faceAnalyser());
    } catch (const std::exception& error) {
        qWarning("faces will not steer metering: %s", error.what());
        return nullptr;
    }
}

// A logged photo carries the exposure the meter shows when it is taken and, when a fix
// can be had and the start-up's location manager still exists, where it was taken.
void installMetadataProvider(AnyCameraController& camera, CalculationController& meter,
                             QPointer<LocationManager> location)
{
    camera.setGetMetadata([&meter, location] {
        const ISO iso = meter.iso();
        const Aperture aperture = meter.aperture();
        const ShutterSpeed speed = meter.speed();
        const Compensation compensation = meter.compensation();
        if (!location) {
            return QtFuture::makeReadyFuture(
                loggedPhotoMetadata(iso, aperture, speed, compensation, std::nullopt));
        }
        return location->currentLocation()
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
    options.quickAction = QuickAction::fromArguments(arguments);
    return options;
}

void fillDependencies(DependencyContainer& container, const StartupOptions& options,
                      AdapterFactory& adapters, QPointer<LocationManager> photoLocation)
{
    DependencyContainer::Services services;
    services.preferenceStore = adapters.preferenceStore();
    services.clock = adapters.clock();
    services.imageMetadata = adapters.imageMetadata();
    services.desktopServices = adapters.desktopServices();
    services.mailComposer = adapters.mailComposer(*services.desktopServices);
    services.haptics = adapters.haptics();
    services.userDesktopEntry = adapters.userDesktopEntry();
    services.windowIcon = adapters.windowIcon();
    services.environment = std::make_unique<AppEnvironment>();

    services.settings = std::make_unique<Settings>(*services.preferenceStore,
                                                   *services.mailComposer, options.launchArguments);
    Settings& settings = *services.settings;
    services.locationManager = std::make_unique<LocationManager>(
        adapters.positionSource(), adapters.reverseGeocoder(*services.clock));
    services.tileSource = adapters.tileSource();

    if (options.simulatedModel) {
        const bool screenshotRun =
            options.screenshotRun || services.preferenceStore->boolean(kScreenshotRunKey);
        services.cameraController =
            std::make_unique<AnyCameraController>(std::make_shared<MockCameraController>(
                AuthorizationStatus::authorized, options.simulatedModel, screenshotRun));
    } else {
        // The album and the face detector are made after the camera; the camera looks
        // them up when it needs them.
        auto device = std::make_unique<SelfMeteringCamera>(adapters.captureDevice(),
                                                           *services.preferenceStore);
        services.selfMeteringCamera = device.get();
        auto camera = std::make_shared<CameraController>(
            std::move(device), [&container] { return &container.photoAlbum(); },
            *services.imageMetadata,
            [&container](const CameraFrame& frame) {
                if (FaceDetector* detector = container.faceDetector())
                    detector->process(frame);
            });
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
        installMetadataProvider(*services.cameraController, controller, photoLocation);

    services.photoLibrary = adapters.photoLibrary(*services.imageMetadata);
    if (options.simulatedModel) {
        services.photoAlbum =
            std::make_unique<PhotoAlbumMock>(*services.photoLibrary, *services.imageMetadata);
    } else {
        services.photoAlbum =
            std::make_unique<PhotoAlbum>(*services.photoLibrary, *services.imageMetadata);
    }
    services.faceDetector = makeFaceDetector(adapters);

    // The main screen sets the camera up when it is first shown.
    container.fill(std::move(services));
}

} // namespace kestrum
