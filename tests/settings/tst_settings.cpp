#include "platform/fakemailcomposer.h"
#include "platform/inipreferencestore.h"
#include "platform/memorypreferencestore.h"
#include "settings/settings.h"
#include "settings/translationcatalogue.h"

#include <QJsonObject>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrum;

namespace {

// The list as "id:name" words, which reads well in a failed comparison.
QStringList words(const QList<Profile>& profiles)
{
    QStringList words;
    for (const Profile& profile : profiles)
        words.append(profile.id + u':' + profile.name);
    return words;
}

QList<Profile> lettered(const QString& ids)
{
    QList<Profile> profiles;
    for (const QChar id : ids)
        profiles.append({QString(id), QString(id).toUpper()});
    return profiles;
}

QString ids(const QList<Profile>& profiles)
{
    QString ids;
    for (const Profile& profile : profiles)
        ids += profile.id;
    return ids;
}

QVariantMap entry(const QString& id, const QString& name)
{
    return {{id, name}};
}

} // namespace

// The profile list, the current profile and the review rule, on a store of their own.
class SettingsTest : public QObject {
    Q_OBJECT

    FakeMailComposer m_mail{true};

private slots:
    void initTestCase() { QVERIFY(installTranslationCatalogue(*QCoreApplication::instance())); }

    void firstStartReadsTheDefaultsAndWritesNothing()
    {
        MemoryPreferenceStore store;
        const Settings settings(store, m_mail, {});
        QCOMPARE(words(settings.profiles()), QStringList{"default:Default"});
        QCOMPARE(settings.currentProfileID(), "default");
        QCOMPARE(settings.currentProfileSettings()->prefix(), "default.");
        QCOMPARE(settings.appStarts(), qint64(0));
        QVERIFY(!settings.didPromptForReview());
        QVERIFY(store.storedKeys().isEmpty());
    }

    void storedList_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QStringList>("profiles");
        QTest::newRow("in order") << QVariant(QVariantList{entry("default", "Mine"),
                                                           entry("B2", "Film"),
                                                           entry("A1", "Night")})
                                  << QStringList{"default:Mine", "B2:Film", "A1:Night"};
        QTest::newRow("an empty map is skipped")
            << QVariant(QVariantList{entry("default", "Default"), QVariantMap(), entry("A1", "X")})
            << QStringList{"default:Default", "A1:X"};
        QTest::newRow("one element not a map")
            << QVariant(QVariantList{entry("default", "Mine"), QString("A1")})
            << QStringList{"default:Default"};
        QTest::newRow("a name that is not a text")
            << QVariant(QVariantList{entry("default", "Mine"), QVariantMap{{"A1", 3.0}}})
            << QStringList{"default:Default"};
        QTest::newRow("not an array") << QVariant("default") << QStringList{"default:Default"};
        QTest::newRow("an empty array") << QVariant(QVariantList()) << QStringList();
    }

    void storedList()
    {
        QFETCH(QVariant, stored);
        QFETCH(QStringList, profiles);
        MemoryPreferenceStore store;
        store.storeRaw("profiles", stored);
        const Settings settings(store, m_mail, {});
        QCOMPARE(words(settings.profiles()), profiles);
        // Left as it was until the list is saved.
        if (stored.typeId() == QMetaType::QVariantList)
            QCOMPARE(*store.array("profiles"), stored.toList());
        else
            QCOMPARE(store.string("profiles").value_or(QString()), stored.toString());
    }

    void firstProfileStaysFirst_data()
    {
        QTest::addColumn<bool>("deleting");
        QTest::addColumn<QList<int>>("indexes");
        QTest::addColumn<int>("destination");
        QTest::newRow("delete nothing") << true << QList<int>{} << 0;
        QTest::newRow("delete the first") << true << QList<int>{0} << 0;
        QTest::newRow("delete from the first on") << true << QList<int>{2, 0} << 0;
        QTest::newRow("move nothing") << false << QList<int>{} << 2;
        QTest::newRow("move the first") << false << QList<int>{0} << 2;
        QTest::newRow("move from the first on") << false << QList<int>{1, 0} << 3;
        QTest::newRow("move before the first") << false << QList<int>{2} << 0;
        QTest::newRow("move before the start") << false << QList<int>{2} << -1;
    }

    void firstProfileStaysFirst()
    {
        QFETCH(bool, deleting);
        QFETCH(QList<int>, indexes);
        QFETCH(int, destination);
        MemoryPreferenceStore store;
        Settings settings(store, m_mail, {});
        settings.setProfiles(lettered("abc"));
        const QSignalSpy announced(&settings, &Settings::objectWillChange);
        if (deleting)
            settings.deleteProfiles(indexes);
        else
            settings.moveProfiles(indexes, destination);
        QCoreApplication::processEvents();
        QCOMPARE(ids(settings.profiles()), "abc");
        QCOMPARE(announced.count(), 0);
        QVERIFY(store.storedKeys().isEmpty());
    }

    void deleteWaitsForTheEventLoopAndUsesTheFirstIndex()
    {
        MemoryPreferenceStore store;
        Settings settings(store, m_mail, {});
        settings.setProfiles(lettered("abcd"));
        settings.deleteProfiles({3, 1});
        QCOMPARE(ids(settings.profiles()), "abcd");
        QCoreApplication::processEvents();
        QCOMPARE(ids(settings.profiles()), "acd");
        QCOMPARE(store.array("profiles")->size(), 3);
    }

    void move_data()
    {
        QTest::addColumn<QList<int>>("indexes");
        QTest::addColumn<int>("destination");
        QTest::addColumn<QString>("result");
        QTest::newRow("one down by one") << QList<int>{1} << 3 << "acbde";
        QTest::newRow("one to the end") << QList<int>{1} << 5 << "acdeb";
        QTest::newRow("onto itself") << QList<int>{2} << 2 << "abcde";
        QTest::newRow("just after itself") << QList<int>{2} << 3 << "abcde";
        QTest::newRow("one up to second") << QList<int>{4} << 1 << "aebcd";
        QTest::newRow("two apart, between them") << QList<int>{1, 3} << 3 << "acbde";
        QTest::newRow("two apart, to the end") << QList<int>{3, 1} << 5 << "acebd";
        QTest::newRow("two apart, up") << QList<int>{2, 4} << 1 << "acebd";
        QTest::newRow("destination beyond the list, dropped") << QList<int>{1} << 6 << "abcde";
        QTest::newRow("index beyond the list, dropped") << QList<int>{5} << 1 << "abcde";
    }

    void move()
    {
        QFETCH(QList<int>, indexes);
        QFETCH(int, destination);
        QFETCH(QString, result);
        MemoryPreferenceStore store;
        Settings settings(store, m_mail, {});
        settings.setProfiles(lettered("abcde"));
        if (QByteArray(QTest::currentDataTag()).endsWith("dropped"))
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot move profiles"));
        settings.moveProfiles(indexes, destination);
        QCoreApplication::processEvents();
        QCOMPARE(ids(settings.profiles()), result);
        // What was moved is what is stored.
        const Settings reloaded(store, m_mail, {});
        if (store.storedKeys().contains("profiles"))
            QCOMPARE(ids(reloaded.profiles()), result);
        else
            QCOMPARE(result, "abcde");
    }

    void addRenameDeleteSurviveAReload()
    {
        const QTemporaryDir directory;
        QVERIFY(directory.isValid());
        const QString path = directory.filePath("settings.ini");
        QString addedID;
        {
            IniPreferenceStore store(path);
            Settings settings(store, m_mail, {});
            settings.addProfile();
            settings.addProfile();
            QCOMPARE(settings.profiles().size(), 3);
            addedID = settings.profiles().at(1).id;
            QVERIFY(QRegularExpression("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$")
                        .match(addedID)
                        .hasMatch());
            QCOMPARE(settings.profiles().at(1).name, "Untitled");
            QVERIFY(settings.profiles().at(2).id != addedID);
            QVERIFY(settings.renameProfile(addedID, "Portrait"));
            QVERIFY(!settings.renameProfile("nobody", "X"));
            settings.deleteProfiles({2});
            QCoreApplication::processEvents();
        }
        IniPreferenceStore store(path);
        const Settings settings(store, m_mail, {});
        QCOMPARE(words(settings.profiles()),
                 (QStringList{"default:Default", addedID + ":Portrait"}));
        QCOMPARE(settings.currentProfileID(), "default");
    }

    void deletedProfileKeepsOnlyWhatItStored()
    {
        MemoryPreferenceStore store;
        Settings settings(store, m_mail, {});
        settings.addProfile();
        settings.addProfile();
        const QString used = settings.profiles().at(2).id;
        settings.setCurrentProfileID(used);
        settings.currentProfileSettings()->setMode(Mode::m);
        settings.deleteProfiles({1});
        QCoreApplication::processEvents();
        settings.deleteProfiles({1});
        QCoreApplication::processEvents();
        QCOMPARE(words(settings.profiles()), QStringList{"default:Default"});
        auto keys = store.storedKeys();
        keys.sort();
        QStringList expected{"currentProfileID", "profiles", used + ".mode"};
        expected.sort();
        QCOMPARE(keys, expected);
        QCOMPARE(settings.currentProfileID(), used); // deleting leaves the current id alone
    }

    void switchingProfileReplacesItsSettings()
    {
        MemoryPreferenceStore store;
        Settings settings(store, m_mail, {});
        const QPointer<ProfileSettings> previous = settings.currentProfileSettings();
        QStringList idsWhenAnnounced;
        connect(&settings, &Settings::objectWillChange, this,
                [&] { idsWhenAnnounced.append(store.string("currentProfileID").value_or("")); });
        const QSignalSpy replaced(&settings, &Settings::currentProfileSettingsChanged);

        settings.setCurrentProfileID("night");

        QVERIFY(!idsWhenAnnounced.isEmpty());
        QCOMPARE(idsWhenAnnounced.first(), "default"); // announced before the write
        QCOMPARE(replaced.count(), 1);
        QCOMPARE(settings.currentProfileID(), "night");
        QCOMPARE(settings.currentProfileSettings()->prefix(), "night.");
        QVERIFY(settings.currentProfileSettings() != previous);
        QVERIFY(previous); // still there for observers finishing their update
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!previous);

        const Settings reloaded(store, m_mail, {});
        QCOMPARE(reloaded.currentProfileSettings()->prefix(), "night.");
    }

    void reviewIsAskedFor_data()
    {
        QTest::addColumn<int>("previousStarts");
        QTest::addColumn<bool>("prompted");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("asked");
        const QStringList none;
        const QStringList screenshots{"kestrum", "SCREENSHOTS_MODE"};
        QTest::newRow("1st start") << 0 << false << none << false;
        QTest::newRow("2nd start") << 1 << false << none << false;
        QTest::newRow("3rd start") << 2 << false << none << true;
        QTest::newRow("4th start") << 3 << false << none << false;
        QTest::newRow("5th start") << 4 << false << none << false;
        QTest::newRow("6th start, never asked") << 5 << false << none << true;
        QTest::newRow("6th start, asked before") << 5 << true << none << false;
        QTest::newRow("99th start, asked before") << 98 << true << none << false;
        QTest::newRow("100th start, asked before") << 99 << true << none << true;
        QTest::newRow("200th start, asked before") << 199 << true << none << true;
        QTest::newRow("3rd start, screenshots") << 2 << false << screenshots << false;
        QTest::newRow("100th start, screenshots") << 99 << true << screenshots << false;
        QTest::newRow("a word containing it")
            << 2 << false << QStringList{"kestrum", "-SCREENSHOTS_MODE_X"} << true;
    }

    void reviewIsAskedFor()
    {
        QFETCH(int, previousStarts);
        QFETCH(bool, prompted);
        QFETCH(QStringList, arguments);
        QFETCH(bool, asked);
        MemoryPreferenceStore store;
        store.setInteger("appStarts", previousStarts);
        if (prompted)
            store.setBoolean("didPromptForReview", true);
        Settings settings(store, m_mail, arguments);
        const QSignalSpy announced(&settings, &Settings::objectWillChange);
        settings.countAppStart();
        QCOMPARE(announced.count(), 1);
        QCOMPARE(settings.appStarts(), qint64(previousStarts) + 1);
        QCOMPARE(settings.shouldPromptForReview(), asked);
    }

    void recordedReviewMovesToEveryHundredth()
    {
        MemoryPreferenceStore store;
        store.setInteger("appStarts", 2);
        Settings settings(store, m_mail, {});
        settings.countAppStart();
        QVERIFY(settings.shouldPromptForReview());
        settings.recordReviewPrompt();
        QVERIFY(!settings.shouldPromptForReview());
        QVERIFY(store.boolean("didPromptForReview"));
    }

    void mailIsAskedForOnce_data()
    {
        QTest::addColumn<bool>("canSend");
        QTest::newRow("mail set up") << true;
        QTest::newRow("no mail program") << false;
    }

    void mailIsAskedForOnce()
    {
        QFETCH(bool, canSend);
        MemoryPreferenceStore store;
        const FakeMailComposer mail(canSend);
        const Settings settings(store, mail, {});
        QCOMPARE(mail.queryCount(), 0);
        QCOMPARE(settings.canSendEmail(), canSend);
        QCOMPARE(settings.canSendEmail(), canSend);
        QCOMPARE(mail.queryCount(), 1);
    }

    void profileEncodesWithIdAndName()
    {
        const Profile profile{"A1", "Night"};
        QVERIFY(Profile::fromJson(profile.toJson()) == profile);
        QVERIFY(!Profile::fromJson(QJsonObject{{"id", "A1"}}));
        QVERIFY(profile != (Profile{"A1", "Day"}));
        QVERIFY(qHash(profile) != qHash(Profile{"A1", "Day"}));
    }

    void aboutTheAppAndTheSystem()
    {
        QCOMPARE(Settings::appName(), "Kestrum");
        QVERIFY(
            QRegularExpression("^\\d+\\.\\d+\\.\\d+$").match(Settings::appVersion()).hasMatch());
        QVERIFY(!Settings::buildNumber().isEmpty());
        QVERIFY(Settings::osVersion().endsWith(' ' + QSysInfo::productVersion()));
        QVERIFY(Settings::osVersion().front().isUpper());
    }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"
