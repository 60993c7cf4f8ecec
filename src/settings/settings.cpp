#include "settings.h"

#include "platform/desktop/mailcomposer.h"
#include "platform/store/preferencestore.h"
#include "profilesettings.h"
#include "settingslogging.h"

#include <QMetaObject>
#include <QSysInfo>
#include <QUuid>

#include <algorithm>
#include <limits>

namespace kestrum {

namespace {

constexpr auto kAppStartsKey = "appStarts";
constexpr auto kDidPromptForReviewKey = "didPromptForReview";
constexpr auto kCurrentProfileIDKey = "currentProfileID";
constexpr auto kProfilesKey = "profiles";

constexpr auto kScreenshotsModeArgument = "SCREENSHOTS_MODE";
constexpr qint64 kFirstReviewStart = 3;
constexpr qint64 kReviewPeriodStartsBeforePrompt = 3;
constexpr qint64 kReviewPeriodStartsAfterPrompt = 100;

QString key(const char* name)
{
    return QString::fromLatin1(name);
}

PreferenceStore::StringMap storedForm(const Profile& profile)
{
    return {{profile.id, profile.name}};
}

QVariantMap registeredForm(const Profile& profile)
{
    return {{profile.id, profile.name}};
}

// A whole stored list, or nothing when any element is not a map of strings.
std::optional<QList<Profile>> profilesFromArray(const QVariantList& array)
{
    QList<Profile> profiles;
    for (const QVariant& element : array) {
        if (element.typeId() != QMetaType::QVariantMap)
            return std::nullopt;
        const QVariantMap map = element.toMap();
        for (const QVariant& value : map) {
            if (value.typeId() != QMetaType::QString)
                return std::nullopt;
        }
        if (map.isEmpty())
            continue;
        profiles.append({map.firstKey(), map.first().toString()});
    }
    return profiles;
}

// The smallest index of a set given as a list, which is what the list views hand over.
std::optional<int> firstIndex(const QList<int>& indexes)
{
    if (indexes.isEmpty())
        return std::nullopt;
    return *std::min_element(indexes.cbegin(), indexes.cend());
}

// "debian" → "Debian", with the platforms whose names are not simply capitalised.
QString systemName(const QString& productType)
{
    static constexpr std::pair<const char*, const char*> kNames[] = {
        {"ios", "iOS"}, {"macos", "macOS"}, {"tvos", "tvOS"}, {"watchos", "watchOS"}};
    for (const auto& [type, name] : kNames) {
        if (productType == QLatin1String(type))
            return QString::fromLatin1(name);
    }
    if (productType.isEmpty())
        return productType;
    return productType.front().toUpper() + productType.mid(1);
}

} // namespace

Settings::Settings(PreferenceStore& store, const MailComposer& mailComposer,
                   QStringList launchArguments, QObject* parent)
    : QObject(parent)
    , m_store(store)
    , m_mailComposer(mailComposer)
    , m_launchArguments(std::move(launchArguments))
{
    const Profile defaultProfile = Profile::defaultProfile();
    m_store.registerDefaults({
        {key(kCurrentProfileIDKey), defaultProfile.id},
        {key(kProfilesKey), QVariantList{registeredForm(defaultProfile)}},
    });
    m_profiles = loadProfiles();
    m_currentProfileSettings = new ProfileSettings(currentProfileID(), m_store, this);
    connect(&m_canSendEmailQuery, &QFutureWatcher<bool>::finished, this, [this] {
        const QFuture<bool> answer = m_canSendEmailQuery.future();
        m_canSendEmail = !answer.isCanceled() && answer.resultCount() > 0 && answer.result();
        emit canSendEmailChanged();
    });
}

QList<Profile> Settings::loadProfiles() const
{
    if (const auto array = m_store.array(key(kProfilesKey))) {
        if (auto profiles = profilesFromArray(*array))
            return *profiles;
        qCWarning(lcSettings, "the stored profile list is damaged; only the default is used");
    }
    return {Profile::defaultProfile()};
}

void Settings::setProfiles(const QList<Profile>& profiles)
{
    emit objectWillChange();
    m_profiles = profiles;
    emit profilesChanged();
}

void Settings::saveProfiles()
{
    QList<PreferenceStore::StringMap> array;
    array.reserve(m_profiles.size());
    for (const Profile& profile : std::as_const(m_profiles))
        array.append(storedForm(profile));
    m_store.setArrayOfMaps(key(kProfilesKey), array);
}

void Settings::addProfile()
{
    QList<Profile> profiles = m_profiles;
    //% "Untitled"
    profiles.append(
        {QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(), qtTrId("profile.untitled")});
    setProfiles(profiles);
    saveProfiles();
}

void Settings::deleteProfiles(const QList<int>& indexes)
{
    const auto index = firstIndex(indexes);
    if (!index || *index == 0)
        return;
    // Run after the list view has finished the edit that asked for it.
    QMetaObject::invokeMethod(
        this, [this, index = *index] { removeProfile(index); }, Qt::QueuedConnection);
}

void Settings::removeProfile(qsizetype index)
{
    if (index < 0 || index >= m_profiles.size()) {
        qCWarning(lcSettings, "no profile to delete at index %lld", qlonglong(index));
        return;
    }
    QList<Profile> profiles = m_profiles;
    profiles.removeAt(index);
    setProfiles(profiles);
    saveProfiles();
}

void Settings::moveProfiles(const QList<int>& indexes, int destination)
{
    const auto index = firstIndex(indexes);
    if (!index || *index == 0 || destination < 1)
        return;
    QMetaObject::invokeMethod(
        this, [this, indexes, destination] { moveProfilesNow(indexes, destination); },
        Qt::QueuedConnection);
}

void Settings::moveProfilesNow(QList<int> indexes, int destination)
{
    std::sort(indexes.begin(), indexes.end());
    indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
    if (indexes.front() < 0 || indexes.back() >= m_profiles.size() ||
        destination > m_profiles.size()) {
        qCWarning(lcSettings, "cannot move profiles %d … %d to %d in a list of %lld",
                  indexes.front(), indexes.back(), destination, qlonglong(m_profiles.size()));
        return;
    }
    // The moved entries keep their order and land before the entry that stood at
    // `destination`; everything else keeps its order.
    QList<Profile> moved;
    QList<Profile> kept;
    for (qsizetype i = 0; i < m_profiles.size(); ++i)
        (indexes.contains(int(i)) ? moved : kept).append(m_profiles.at(i));
    const auto movedBefore = std::count_if(indexes.cbegin(), indexes.cend(),
                                           [destination](int i) { return i < destination; });
    const qsizetype insertion = destination - movedBefore;
    QList<Profile> profiles = kept.first(insertion);
    profiles.append(moved);
    profiles.append(kept.sliced(insertion));
    setProfiles(profiles);
    saveProfiles();
}

bool Settings::renameProfile(const QString& id, const QString& name)
{
    QList<Profile> profiles = m_profiles;
    const auto found = std::find_if(profiles.begin(), profiles.end(),
                                    [&id](const Profile& profile) { return profile.id == id; });
    if (found == profiles.end())
        return false;
    found->name = name;
    setProfiles(profiles);
    saveProfiles();
    return true;
}

QString Settings::currentProfileID() const
{
    return m_store.string(key(kCurrentProfileIDKey)).value_or(Profile::defaultProfile().id);
}

void Settings::setCurrentProfileID(const QString& id)
{
    emit objectWillChange();
    m_store.setString(key(kCurrentProfileIDKey), id);
    emit currentProfileIDChanged();
    replaceCurrentProfileSettings();
}

bool Settings::switchProfile(const QString& id)
{
    const bool listed = std::any_of(m_profiles.cbegin(), m_profiles.cend(),
                                    [&id](const Profile& profile) { return profile.id == id; });
    if (listed)
        setCurrentProfileID(id);
    return listed;
}

void Settings::replaceCurrentProfileSettings()
{
    emit objectWillChange();
    ProfileSettings* previous = m_currentProfileSettings;
    m_currentProfileSettings = new ProfileSettings(currentProfileID(), m_store, this);
    emit currentProfileSettingsChanged();
    // Observers have moved to the new instance by now; queued signals and bindings
    // that still hold the old one get to finish first.
    previous->deleteLater();
}

qint64 Settings::appStarts() const
{
    return m_store.integer(key(kAppStartsKey));
}

void Settings::countAppStart()
{
    const qint64 starts = appStarts();
    if (starts == std::numeric_limits<qint64>::max())
        qFatal("the count of app starts overflows");
    emit objectWillChange();
    m_store.setInteger(key(kAppStartsKey), starts + 1);
}

bool Settings::didPromptForReview() const
{
    return m_store.boolean(key(kDidPromptForReviewKey));
}

void Settings::recordReviewPrompt()
{
    emit objectWillChange();
    m_store.setBoolean(key(kDidPromptForReviewKey), true);
}

bool Settings::shouldPromptForReview() const
{
    if (m_launchArguments.contains(QLatin1String(kScreenshotsModeArgument)))
        return false;
    const qint64 starts = appStarts();
    if (starts < kFirstReviewStart)
        return false;
    const qint64 periodStarts =
        didPromptForReview() ? kReviewPeriodStartsAfterPrompt : kReviewPeriodStartsBeforePrompt;
    return starts % periodStarts == 0;
}

bool Settings::canSendEmail() const
{
    if (!std::exchange(m_canSendEmailAsked, true))
        m_canSendEmailQuery.setFuture(m_mailComposer.canSendMail());
    return m_canSendEmail.value_or(false);
}

QString Settings::appName()
{
    return QStringLiteral(KESTRUM_APP_NAME);
}

QString Settings::appVersion()
{
    return QStringLiteral(KESTRUM_APP_VERSION);
}

QString Settings::buildNumber()
{
    return QStringLiteral(KESTRUM_BUILD_NUMBER);
}

QString Settings::osVersion()
{
    return systemName(QSysInfo::productType()) + QLatin1Char(' ') + QSysInfo::productVersion();
}

} // namespace kestrum
