#include "settingsfacade.h"

#include "app/profilesettingsfacade.h"
#include "app/qmlsingleton.h"
#include "platform/desktop/mailcomposer.h"
#include "settings/feedbackmail.h"
#include "settings/settings.h"

namespace kestrum {

SettingsFacade::SettingsFacade(const Services& services, QObject* parent)
    : QObject(parent)
    , m_settings(services.settings)
    , m_store(services.store)
    , m_mail(services.mail)
    , m_profiles(new ProfileListModel(services.settings, this))
    , m_appIcons(new AppIconModel(services.launcherIcon, services.windowIcon, this))
{
    connect(&m_settings, &Settings::currentProfileIDChanged, this,
            &SettingsFacade::currentProfileIDChanged);
    connect(&m_settings, &Settings::canSendEmailChanged, this,
            &SettingsFacade::canSendEmailChanged);
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

bool SettingsFacade::sendFeedback()
{
    return m_mail.compose(FeedbackMail::forThisDevice());
}

} // namespace kestrum
