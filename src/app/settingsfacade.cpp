#include "settingsfacade.h"

#include "app/profilesettingsfacade.h"
#include "app/qmlsingleton.h"
#include "settings/settings.h"

namespace kestrum {

SettingsFacade::SettingsFacade(Settings& settings, PreferenceStore& store, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_store(store)
    , m_profiles(new ProfileListModel(settings, this))
{
    connect(&settings, &Settings::currentProfileIDChanged, this,
            &SettingsFacade::currentProfileIDChanged);
}

SettingsFacade* SettingsFacade::create(QQmlEngine*, QJSEngine*)
{
    return offeredSingleton(s_instance, "AppSettings");
}

QString SettingsFacade::currentProfileID() const
{
    return m_settings.currentProfileID();
}

void SettingsFacade::setCurrentProfileID(const QString& id)
{
    m_settings.switchProfile(id);
}

bool SettingsFacade::canSendEmail() const
{
    return m_settings.canSendEmail();
}

QString SettingsFacade::appName()
{
    return Settings::appName();
}

QString SettingsFacade::appVersion()
{
    return Settings::appVersion();
}

QString SettingsFacade::buildNumber()
{
    return Settings::buildNumber();
}

QString SettingsFacade::osVersion()
{
    return Settings::osVersion();
}

ProfileSettingsFacade* SettingsFacade::profileSettings(const QString& id)
{
    auto* facade = new ProfileSettingsFacade(id, m_settings, m_store);
    QJSEngine::setObjectOwnership(facade, QJSEngine::JavaScriptOwnership);
    return facade;
}

} // namespace kestrum
