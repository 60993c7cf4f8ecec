#include "desktopfacade.h"

#include "app/qmlsingleton.h"
#include "platform/desktop/desktopservices.h"

namespace kestrum {

DesktopFacade::DesktopFacade(DesktopServices& services, QObject* parent)
    : QObject(parent)
    , m_services(services)
{}

DesktopFacade* DesktopFacade::create(QQmlEngine*, QJSEngine*)
{
    return offeredSingleton(s_instance, "Desktop");
}

bool DesktopFacade::openUrl(const QUrl& url)
{
    return m_services.openUrl(url);
}

bool DesktopFacade::openCameraSettings()
{
    return m_services.openCameraSettings();
}

bool DesktopFacade::openLocationSettings()
{
    return m_services.openLocationSettings();
}

} // namespace kestrum
