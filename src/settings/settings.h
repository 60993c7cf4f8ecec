#pragma once

#include "profile.h"
#include "profilesettings.h"

#include <QFutureWatcher>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace kestrum {

class MailComposer;
class PreferenceStore;

/// The app-wide settings: the list of named profiles in the user's order, which of
/// them is current and that profile's `ProfileSettings`, the count of app starts and
/// the rule for asking for a review, and a few facts about the app and the device.
///
/// One instance lives for the whole process. `objectWillChange` is emitted before
/// every change; the properties carry their own change signals for QML.
///
/// The list is stored under "profiles" as an array of one-entry maps, id → name, in
/// list order. A stored list that is not an array of string-to-string maps reads as
/// the default profile alone and stays as it is until the list is next saved. The
/// first profile can be neither deleted nor moved, and nothing can be put before it.
///
/// `currentProfileSettings` is replaced whenever the current profile changes: keep
/// following the property rather than the instance, which is deleted soon after.
class Settings : public QObject {
    Q_OBJECT
    Q_PROPERTY(
        QList<kestrum::Profile> profiles READ profiles WRITE setProfiles NOTIFY profilesChanged)
    Q_PROPERTY(QString currentProfileID READ currentProfileID WRITE setCurrentProfileID NOTIFY
                   currentProfileIDChanged)
    Q_PROPERTY(kestrum::ProfileSettings* currentProfileSettings READ currentProfileSettings NOTIFY
                   currentProfileSettingsChanged)
    Q_PROPERTY(bool canSendEmail READ canSendEmail NOTIFY canSendEmailChanged)
    Q_PROPERTY(QString appName READ appName CONSTANT)
    Q_PROPERTY(QString appVersion READ appVersion CONSTANT)
    Q_PROPERTY(QString buildNumber READ buildNumber CONSTANT)
    Q_PROPERTY(QString osVersion READ osVersion CONSTANT)

public:
    /// Registers the fallbacks of the current id and of the list, loads the list and
    /// makes the current profile's settings; writes nothing. `store` and
    /// `mailComposer` must outlive this object. `launchArguments` are the process's
    /// arguments, consulted for "SCREENSHOTS_MODE".
    Settings(PreferenceStore& store, const MailComposer& mailComposer, QStringList launchArguments,
             QObject* parent = nullptr);

    const QList<Profile>& profiles() const { return m_profiles; }
    /// Replaces the list in memory only; `saveProfiles()` persists it.
    void setProfiles(const QList<Profile>& profiles);
    /// Writes the list to the store, replacing what was there.
    Q_INVOKABLE void saveProfiles();

    /// Appends a profile with a new upper-case UUID and the name "profile.untitled",
    /// then saves. Nothing is written for its settings.
    Q_INVOKABLE void addProfile();
    /// Removes the profile at the smallest of `indexes`, later on the event loop, and
    /// saves. Nothing happens for an empty set or when that index is 0. The removed
    /// profile's settings stay in the store and the current id is left alone.
    Q_INVOKABLE void deleteProfiles(const QList<int>& indexes);
    /// Moves the profiles at `indexes` to stand before the entry now at `destination`
    /// (an offset in the list before the move; the count moves them to the end), later
    /// on the event loop, and saves. Nothing happens for an empty set, a smallest index
    /// of 0 or a destination below 1.
    Q_INVOKABLE void moveProfiles(const QList<int>& indexes, int destination);
    /// Gives the profile `id` the name `name` and saves; false when no profile has that id.
    Q_INVOKABLE bool renameProfile(const QString& id, const QString& name);

    /// The stored current id, "default" when none is stored.
    QString currentProfileID() const;
    /// Stores `id` without checking that it is listed, and makes new current settings
    /// for it: callers that take ids from outside use `switchProfile` instead.
    void setCurrentProfileID(const QString& id);
    /// Makes the listed profile `id` current; false, changing nothing, when no listed
    /// profile has that id (a quick action or a script naming a deleted profile).
    Q_INVOKABLE bool switchProfile(const QString& id);
    /// Never null once constructed.
    ProfileSettings* currentProfileSettings() const { return m_currentProfileSettings; }

    /// How many times the app has started; 0 when never counted.
    qint64 appStarts() const;
    /// Counts one start of the app. Stops the program should the count overflow.
    void countAppStart();
    /// Whether the review request has ever been made.
    bool didPromptForReview() const;
    /// Records that the review request has been made.
    void recordReviewPrompt();
    /// Whether this start, already counted, should ask for a review: never with the
    /// launch argument "SCREENSHOTS_MODE" or before the 3rd start; then on every 3rd
    /// start until the request was recorded, on every 100th after.
    bool shouldPromptForReview() const;

    /// Whether the device can send mail: asked of the platform on the first read, without
    /// waiting, then kept. False until the answer is known; `canSendEmailChanged` follows
    /// when it is.
    bool canSendEmail() const;

    /// The app's name, version and build number, as built.
    static QString appName();
    static QString appVersion();
    static QString buildNumber();
    /// The operating system's name and version, e.g. "Debian 12".
    static QString osVersion();

signals:
    /// Emitted immediately before any value of these settings changes.
    void objectWillChange();
    void profilesChanged();
    void currentProfileIDChanged();
    void currentProfileSettingsChanged();
    /// The answer to `canSendEmail` is known.
    void canSendEmailChanged();

private:
    QList<Profile> loadProfiles() const;
    void replaceCurrentProfileSettings();
    void removeProfile(qsizetype index);
    void moveProfilesNow(QList<int> indexes, int destination);

    PreferenceStore& m_store;
    const MailComposer& m_mailComposer;
    const QStringList m_launchArguments;
    ProfileSettings* m_currentProfileSettings = nullptr; // a child of this object
    QList<Profile> m_profiles;
    std::optional<bool> m_canSendEmail;
    mutable QFutureWatcher<bool> m_canSendEmailQuery;
    mutable bool m_canSendEmailAsked = false;
};

} // namespace kestrum
