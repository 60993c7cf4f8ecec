#include "qmlservices.h"

#include "app/appenvironmentsingleton.h"
#include "app/camerafacade.h"
#include "app/dependencycontainer.h"
#include "app/facedetectorfacade.h"
#include "app/loggedphotomodel.h"
#include "app/meterfacade.h"
#include "app/settingsfacade.h"

namespace kestrum {

QmlServices::QmlServices(const Sources& sources)
    : m_meter(std::make_unique<MeterFacade>(sources.calculationController, sources.settings))
    , m_camera(std::make_unique<CameraFacade>(sources.cameraController))
    , m_faces(std::make_unique<FaceDetectorFacade>(sources.faceDetector))
    , m_settings(std::make_unique<SettingsFacade>(sources.settings, sources.preferenceStore))
    , m_loggedPhotos(
          std::make_unique<LoggedPhotoModel>(sources.photoAlbum, sources.locationManager))
{
    MeterFacade::setInstance(m_meter.get());
    CameraFacade::setInstance(m_camera.get());
    FaceDetectorFacade::setInstance(m_faces.get());
    SettingsFacade::setInstance(m_settings.get());
    LoggedPhotoModel::setInstance(m_loggedPhotos.get());
    AppEnvironmentSingleton::setInstance(sources.environment);
}

QmlServices::~QmlServices()
{
    MeterFacade::setInstance(nullptr);
    CameraFacade::setInstance(nullptr);
    FaceDetectorFacade::setInstance(nullptr);
    SettingsFacade::setInstance(nullptr);
    LoggedPhotoModel::setInstance(nullptr);
    AppEnvironmentSingleton::setInstance(nullptr);
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
        &container.environment(),
    });
}

} // namespace kestrum
