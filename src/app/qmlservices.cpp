#include "qmlservices.h"

#include "app/appenvironmentsingleton.h"
#include "app/cameracalibrationfacade.h"
#include "app/camerafacade.h"
#include "app/dependencycontainer.h"
#include "app/desktopfacade.h"
#include "app/facedetectorfacade.h"
#include "app/hapticsfacade.h"
#include "app/loggedphotomodel.h"
#include "app/mapview.h"
#include "app/meterfacade.h"
#include "app/previewoverlays.h"
#include "app/settingsfacade.h"

namespace kestrum {

QmlServices::QmlServices(const Sources& sources)
    : m_meter(std::make_unique<MeterFacade>(sources.calculationController, sources.settings))
    , m_camera(std::make_unique<CameraFacade>(sources.cameraController))
    , m_faces(std::make_unique<FaceDetectorFacade>(sources.faceDetector))
    , m_settings(std::make_unique<SettingsFacade>(
          SettingsFacade::Services{sources.settings, sources.preferenceStore, sources.mailComposer,
                                   sources.launcherIcon, sources.windowIcon}))
    , m_loggedPhotos(
          std::make_unique<LoggedPhotoModel>(sources.photoAlbum, sources.locationManager))
    , m_haptics(std::make_unique<HapticsFacade>(sources.haptics))
    , m_desktop(std::make_unique<DesktopFacade>(sources.desktopServices))
    , m_overlays(std::make_unique<PreviewOverlays>(sources.clock))
    , m_calibration(std::make_unique<CameraCalibrationFacade>(sources.liveCamera))
{
    QObject::connect(m_camera.get(), &CameraFacade::subjectAreaChanged, m_overlays.get(),
                     &PreviewOverlays::subjectAreaChanged);
    MeterFacade::setInstance(m_meter.get());
    CameraFacade::setInstance(m_camera.get());
    FaceDetectorFacade::setInstance(m_faces.get());
    SettingsFacade::setInstance(m_settings.get());
    LoggedPhotoModel::setInstance(m_loggedPhotos.get());
    HapticsFacade::setInstance(m_haptics.get());
    DesktopFacade::setInstance(m_desktop.get());
    PreviewOverlays::setInstance(m_overlays.get());
    CameraCalibrationFacade::setInstance(m_calibration.get());
    AppEnvironmentSingleton::setInstance(sources.environment);
    MapView::setSharedTileSource(sources.tileSource);
}

QmlServices::~QmlServices()
{
    MeterFacade::setInstance(nullptr);
    CameraFacade::setInstance(nullptr);
    FaceDetectorFacade::setInstance(nullptr);
    SettingsFacade::setInstance(nullptr);
    LoggedPhotoModel::setInstance(nullptr);
    HapticsFacade::setInstance(nullptr);
    DesktopFacade::setInstance(nullptr);
    PreviewOverlays::setInstance(nullptr);
    CameraCalibrationFacade::setInstance(nullptr);
    AppEnvironmentSingleton::setInstance(nullptr);
    MapView::setSharedTileSource(nullptr);
}

std::unique_ptr<QmlServices> registerQmlServices(const DependencyContainer& container)
{
    return std::make_unique<QmlServices>(QmlServices::Sources{
        container.settings(),
        container.preferenceStore(),
        container.calculationController(),
        container.cameraController(),
        container.faceDetector(),
        container.photoAlbum(),
        container.locationManager(),
        container.haptics(),
        container.desktopServices(),
        container.mailComposer(),
        container.appIcon(),
        container.windowIcon(),
        container.clock(),
        &container.environment(),
        container.selfMeteringCamera(),
        container.tileSource(),
    });
}

} // namespace kestrum
