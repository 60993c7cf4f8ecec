#pragma once

#include "app/appiconmodel.h"
#include "app/profilelistmodel.h"
#include "app/profilesettingsfacade.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class AppIcon;
class MailComposer;
class PreferenceStore;
class Settings;
class WindowIcon;

/// The app-wide settings (`AppSettings`): the profile list and the current profile, the
/// settings of any profile for its editor, the app icon, the feedback mail, and the facts
/// the settings screen shows.
class SettingsFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(AppSettings)
    QML_SINGLETON
    Q_PROPERTY(kestrum::ProfileListModel* profiles READ profiles CONSTANT)
    Q_PROPERTY(QString currentProfileID READ currentProfileID WRITE setCurrentProfileID NOTIFY
                   currentProfileIDChanged)
    Q_PROPERTY(kestrum::AppIconModel* appIcons READ appIcons CONSTANT)
    /// False until the mail program has answered (see Settings::canSendEmail).
    Q_PROPERTY(bool canSendEmail READ canSendEmail NOTIFY canSendEmailChanged)
    Q_PROPERTY(QString appName READ appName CONSTANT)
    Q_PROPERTY(QString appVersion READ appVersion CONSTANT)
    Q_PROPERTY(QString buildNumber READ buildNumber CONSTANT)
    Q_PROPERTY(QString osVersion READ osVersion CONSTANT)

public:
    /// The services the settings screen reaches; `store` is the one `settings` lives on. All
    /// must outlive the facade.
    struct Services {
        Settings& settings;
        PreferenceStore& store;
        MailComposer& mail;
        AppIcon& launcherIcon;
        WindowIcon& windowIcon;
    };

    explicit SettingsFacade(const Services& services, QObject* parent = nullptr);

    static SettingsFacade* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(SettingsFacade* instance) { s_instance = instance; }

    ProfileListModel* profiles() const { return m_profiles; }
    AppIconModel* appIcons() const { return m_appIcons; }
    QString currentProfileID() const;
    /// Makes the listed profile `id` current; an id that is not listed changes nothing.
    void setCurrentProfileID(const QString& id);
    bool canSendEmail() const;
    static QString appName();
    static QString appVersion();
    static QString buildNumber();
    static QString osVersion();

    /// The settings of profile `id`, for the profile editor; the caller (QML) owns them.
    Q_INVOKABLE kestrum::ProfileSettingsFacade* profileSettings(const QString& id);
    /// Opens the feedback mail (FeedbackMail) in the mail program; false when nothing
    /// took it.
    Q_INVOKABLE bool sendFeedback();

signals:
    void currentProfileIDChanged();
    void canSendEmailChanged();

private:
    static inline SettingsFacade* s_instance = nullptr;

    Settings& m_settings;
    PreferenceStore& m_store;
    MailComposer& m_mail;
    ProfileListModel* m_profiles;
    AppIconModel* m_appIcons;
};

} // namespace kestrum
