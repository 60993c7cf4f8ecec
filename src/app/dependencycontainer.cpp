#include "dependencycontainer.h"

#include "album/locationmanager.h"
#include "album/photoalbum.h"
#include "app/appenvironment.h"
#include "camera/anycameracontroller.h"
#include "camera/facedetector.h"
#include "exposure/calculationcontroller.h"
#include "platform/desktop/desktopservices.h"
#include "platform/desktop/haptics.h"
#include "platform/desktop/mailcomposer.h"
#include "platform/desktop/userdesktopentry.h"
#include "platform/desktop/windowicon.h"
#include "platform/map/tilesource.h"
#include "platform/photos/imagemetadata.h"
#include "platform/photos/photolibrary.h"
#include "platform/store/preferencestore.h"
#include "platform/time/clock.h"
#include "settings/settings.h"

#include <QtGlobal>

namespace kestrum {

namespace {
template <typename T> T& require(const std::unique_ptr<T>& service, const char* name)
{
    if (!service)
        qFatal("the dependency container was read before it was filled (%s)", name);
    return *service;
}
} // namespace

DependencyContainer& DependencyContainer::shared()
{
    static DependencyContainer container;
    return container;
}

DependencyContainer::~DependencyContainer()
{
    clear();
}

void DependencyContainer::fill(Services services)
{
    m_services = std::move(services);
}

void DependencyContainer::clear()
{
    m_services.faceDetector.reset();
    m_services.photoAlbum.reset();
    m_services.photoLibrary.reset();
    m_services.calculationController.reset();
    m_services.calculator.reset();
    m_services.selfMeteringCamera = nullptr;
    m_services.cameraController.reset();
    m_services.tileSource.reset();
    m_services.locationManager.reset();
    m_services.settings.reset();
    m_services.environment.reset();
    m_services.windowIcon.reset();
    m_services.userDesktopEntry.reset();
    m_services.haptics.reset();
    m_services.mailComposer.reset();
    m_services.desktopServices.reset();
    m_services.imageMetadata.reset();
    m_services.clock.reset();
    m_services.preferenceStore.reset();
}

PreferenceStore& DependencyContainer::preferenceStore() const
{
    return require(m_services.preferenceStore, "preference store");
}

Settings& DependencyContainer::settings() const
{
    return require(m_services.settings, "settings");
}

AnyCameraController& DependencyContainer::cameraController() const
{
    return require(m_services.cameraController, "camera controller");
}

CalculationController& DependencyContainer::calculationController() const
{
    return require(m_services.calculationController, "calculation controller");
}

LocationManager& DependencyContainer::locationManager() const
{
    return require(m_services.locationManager, "location manager");
}

PhotoAlbum& DependencyContainer::photoAlbum() const
{
    return require(m_services.photoAlbum, "photo album");
}

Clock& DependencyContainer::clock() const
{
    return require(m_services.clock, "clock");
}

DesktopServices& DependencyContainer::desktopServices() const
{
    return require(m_services.desktopServices, "desktop services");
}

MailComposer& DependencyContainer::mailComposer() const
{
    return require(m_services.mailComposer, "mail composer");
}

Haptics& DependencyContainer::haptics() const
{
    return require(m_services.haptics, "haptics");
}

QuickActionShortcuts& DependencyContainer::quickActionShortcuts() const
{
    return require(m_services.userDesktopEntry, "user desktop entry");
}

AppIcon& DependencyContainer::appIcon() const
{
    return require(m_services.userDesktopEntry, "user desktop entry");
}

WindowIcon& DependencyContainer::windowIcon() const
{
    return require(m_services.windowIcon, "window icon");
}

AppEnvironment& DependencyContainer::environment() const
{
    return require(m_services.environment, "environment");
}

} // namespace kestrum
