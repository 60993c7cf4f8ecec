#pragma once

#include "app/profilelistmodel.h"
#include "app/profilesettingsfacade.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class PreferenceStore;
class Settings;

/// The app-wide settings (`AppSettings`): the profile list and the current profile, the
/// settings of any profile for its editor, and the facts the settings screen shows.
class SettingsFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(AppSettings)
    QML_SINGLETON
    Q_PROPERTY(kestrum::ProfileListModel* profiles READ profiles CONSTANT)
    Q_PROPERTY(QString currentProfileID READ currentProfileID WRITE setCurrentProfileID NOTIFY
                   currentProfileIDChanged)
    Q_PROPERTY(bool canSendEmail READ canSendEmail CONSTANT)
    Q_PROPERTY(QString appName READ appName CONSTANT)
    Q_PROPERTY(QString appVersion READ appVersion CONSTANT)
    Q_PROPERTY(QString buildNumber READ buildNumber CONSTANT)
    Q_PROPERTY(QString osVersion READ osVersion CONSTANT)

public:
    /// `store` is the one `settings` lives on; both must outlive the facade.
    SettingsFacade(Settings& settings, PreferenceStore& store, QObject* parent = nullptr);

    static SettingsFacade* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(SettingsFacade* instance) { s_instance = instance; }

    ProfileListModel* profiles() const { return m_profiles; }
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

signals:
    void currentProfileIDChanged();

private:
    static inline SettingsFacade* s_instance = nullptr;

    Settings& m_settings;
    PreferenceStore& m_store;
    ProfileListModel* m_profiles;
};

} // namespace kestrum
