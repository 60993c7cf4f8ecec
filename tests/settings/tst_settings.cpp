#include "settings/settings.h"
#include "settings/translationcatalogue.h"
#include "support/fakemailcomposer.h"
#include "support/memorypreferencestore.h"
#include "support/queuedcalls.h"

#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace kestrum;

namespace {
// "id:name" words read well in a failed comparison.
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

} // namespace

class SettingsTest : public QObject {
    Q_OBJECT

    FakeMailComposer m_mail{true};

private slots:
    void initTestCase() { QVERIFY(installTranslationCatalogue(*QCoreApplication::instance())); }

    void firstStartReadsTheDefaultsAndWritesNothing_data()
    {
        QTest::addColumn<bool>("canSend");
        QTest::newRow("mail set up") << true;
        QTest::newRow("no mail program") << false;
    }

    void firstStartReadsTheDefaultsAndWritesNothing()
    {
        QFETCH(bool, canSend);
        MemoryPreferenceStore store;
        const FakeMailComposer mail(canSend);
        const Settings settings(store, mail, {});
        QCOMPARE(mail.queryCount(), 0);
        QCOMPARE(words(settings.profiles()), QStringList{"default:Default"});
        QCOMPARE(settings.currentProfileID(), "default");
        QCOMPARE(settings.currentProfileSettings()->prefix(), "default.");
        QCOMPARE(settings.appStarts(), qint64(0));
        QVERIFY(!settings.didPromptForReview());
        QVERIFY(store.storedKeys().isEmpty());
        // The mail program is asked once, on the first read, which does not wait for it.
        QSignalSpy known(&settings, &Settings::canSendEmailChanged);
        QCOMPARE(settings.canSendEmail(), false);
        QVERIFY(known.wait());
        QCOMPARE(settings.canSendEmail(), canSend);
        QCOMPARE(mail.queryCount(), 1);
    }

    void storedList_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QStringList>("profiles");
        const auto entry = [](const QString& id, const QVariant& name) {
            return QVariantMap{{id, name}};
        };
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

    void editProfiles_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<bool>("deleting");
        QTest::addColumn<QList<int>>("indexes");
        QTest::addColumn<int>("destination");
        QTest::addColumn<QString>("after");
        const auto row = [](const char* tag, const QString& before, bool deleting,
                            const QList<int>& indexes, int destination, const QString& after) {
            QTest::newRow(tag) << before << deleting << indexes << destination << after;
        };
        // The first profile stays first, with nothing announced or stored ("first" rows).
        row("first: delete nothing", "abc", true, {}, 0, "abc");
        row("first: delete the first", "abc", true, {0}, 0, "abc");
        row("first: delete from the first on", "abc", true, {2, 0}, 0, "abc");
        row("first: move nothing", "abc", false, {}, 2, "abc");
        row("first: move the first", "abc", false, {0}, 2, "abc");
        row("first: move from the first on", "abc", false, {1, 0}, 3, "abc");
        row("first: move before the first", "abc", false, {2}, 0, "abc");
        // Deleting uses the first index only.
        row("delete", "abcd", true, {3, 1}, 0, "acd");
        row("one down by one", "abcde", false, {1}, 3, "acbde");
        row("one to the end", "abcde", false, {1}, 5, "acdeb");
        row("onto itself", "abcde", false, {2}, 2, "abcde");
        row("just after itself", "abcde", false, {2}, 3, "abcde");
        row("one up to second", "abcde", false, {4}, 1, "aebcd");
        row("two apart, between them", "abcde", false, {1, 3}, 3, "acbde");
        row("two apart, to the end", "abcde", false, {3, 1}, 5, "acebd");
        row("two apart, up", "abcde", false, {2, 4}, 1, "acebd");
        row("destination beyond the list, dropped", "abcde", false, {1}, 6, "abcde");
        row("index beyond the list, dropped", "abcde", false, {5}, 1, "abcde");
    }

    void editProfiles()
    {
        QFETCH(QString, before);
        QFETCH(bool, deleting);
        QFETCH(QList<int>, indexes);
        QFETCH(int, destination);
        QFETCH(QString, after);
        MemoryPreferenceStore store;
        Settings settings(store, m_mail, {});
        settings.setProfiles(lettered(before));
        const QSignalSpy announced(&settings, &Settings::objectWillChange);
        if (QByteArray(QTest::currentDataTag()).endsWith("dropped"))
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot move profiles"));
        if (deleting) {
            settings.deleteProfiles(indexes);
            QCOMPARE(ids(settings.profiles()), before); // waits for the event loop
        } else {
            settings.moveProfiles(indexes, destination);
        }
        finishQueuedCalls();
        QCOMPARE(ids(settings.profiles()), after);
        if (QByteArray(QTest::currentDataTag()).startsWith("first:")) {
            QCOMPARE(announced.count(), 0);
            QVERIFY(store.storedKeys().isEmpty());
        } else if (store.storedKeys().contains("profiles")) { // what is shown is what is stored
            QCOMPARE(ids(Settings(store, m_mail, {}).profiles()), after);
        } else {
            QCOMPARE(after, before);
        }
    }

    // Deleting leaves the current id and the deleted profile's own settings alone.
    void addRenameDeleteSurviveAReload()
    {
        MemoryPreferenceStore store;
        Settings settings(store, m_mail, {});
        settings.addProfile();
        settings.addProfile();
        QCOMPARE(settings.profiles().size(), 3);
        const QString addedID = settings.profiles().at(1).id;
        const QString used = settings.profiles().at(2).id;
        QVERIFY(QRegularExpression("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$")
                    .match(addedID)
                    .hasMatch());
        QCOMPARE(settings.profiles().at(1).name, "Untitled");
        QVERIFY(used != addedID);
        QVERIFY(settings.renameProfile(addedID, "Portrait"));
        QVERIFY(!settings.renameProfile("nobody", "X"));
        settings.setCurrentProfileID(used);
        settings.currentProfileSettings()->setMode(Mode::m);
        QSignalSpy deleted(&settings, &Settings::profilesChanged);
        settings.deleteProfiles({2});
        QVERIFY(deleted.wait());
        const Settings reloaded(store, m_mail, {});
        QCOMPARE(words(reloaded.profiles()),
                 (QStringList{"default:Default", addedID + ":Portrait"}));
        QCOMPARE(reloaded.currentProfileID(), used);
        auto keys = store.storedKeys();
        keys.sort(); // the id is in upper case, so first
        QCOMPARE(keys, (QStringList{used + ".mode", "currentProfileID", "profiles"}));
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
        QCOMPARE(idsWhenAnnounced.value(0), "default"); // announced before the write
        QCOMPARE(replaced.count(), 1);
        QCOMPARE(settings.currentProfileID(), "night");
        QCOMPARE(settings.currentProfileSettings()->prefix(), "night.");
        QVERIFY(previous); // still there for observers finishing their update
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!previous);
        const Settings reloaded(store, m_mail, {});
        QCOMPARE(reloaded.currentProfileSettings()->prefix(), "night.");
    }

    void switchProfileTakesOnlyListedIDs_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<bool>("switched");
        QTest::newRow("listed") << "b" << true;
        QTest::newRow("not listed") << "c" << false;
        QTest::newRow("listed in another case") << "B" << false;
    }

    void switchProfileTakesOnlyListedIDs()
    {
        QFETCH(QString, id);
        QFETCH(bool, switched);
        MemoryPreferenceStore store;
        Settings settings(store, m_mail, {});
        settings.setProfiles(QList<Profile>{Profile::defaultProfile()} + lettered("ab"));
        settings.setCurrentProfileID("a");
        const QSignalSpy announced(&settings, &Settings::objectWillChange);
        const QSignalSpy replaced(&settings, &Settings::currentProfileSettingsChanged);
        QCOMPARE(settings.switchProfile(id), switched);
        const QString current = switched ? id : "a";
        QCOMPARE(settings.currentProfileID(), current);
        QCOMPARE(settings.currentProfileSettings()->prefix(), current + '.');
        QCOMPARE(replaced.count(), switched ? 1 : 0);
        if (!switched)
            QCOMPARE(announced.count(), 0);
    }

    void reviewIsAskedFor_data()
    {
        QTest::addColumn<int>("previousStarts");
        QTest::addColumn<bool>("prompted");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("asked");
        const QStringList none;
        const QStringList screenshots{"kestrum", "SCREENSHOTS_MODE"};
        QTest::newRow("2nd start") << 1 << false << none << false;
        QTest::newRow("3rd start") << 2 << false << none << true;
        QTest::newRow("4th start") << 3 << false << none << false;
        QTest::newRow("6th start, never asked") << 5 << false << none << true;
        QTest::newRow("6th start, asked before") << 5 << true << none << false;
        QTest::newRow("99th start, asked before") << 98 << true << none << false;
        QTest::newRow("100th start, asked before") << 99 << true << none << true;
        QTest::newRow("200th start, asked before") << 199 << true << none << true;
        QTest::newRow("3rd start, screenshots") << 2 << false << screenshots << false;
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
        if (asked && !prompted) { // once recorded, it moves to every hundredth start
            settings.recordReviewPrompt();
            QVERIFY(!settings.shouldPromptForReview());
            QVERIFY(store.boolean("didPromptForReview"));
        }
    }

    void systemNameIsCapitalised() { QVERIFY(Settings::osVersion().front().isUpper()); }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"
