#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// `kestrum-cli profiles` as a script sees it, on a settings file of its own.
class ProfilesCliTest : public QObject {
    Q_OBJECT

    struct Run {
        int exitCode = -1;
        QByteArray out;
        QJsonObject json() const { return QJsonDocument::fromJson(out).object(); }
    };

    QString settingsPath() const { return m_dir.filePath("settings.ini"); }

    Run run(const QStringList& arguments)
    {
        QProcess cli;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KESTRUM_SETTINGS", settingsPath());
        cli.setProcessEnvironment(environment);
        cli.start(QStringLiteral(KESTRUM_CLI), QStringList{"profiles"} + arguments);
        if (!cli.waitForFinished(30000))
            return {};
        return {cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1,
                cli.readAllStandardOutput()};
    }

    // The listed ids, in order.
    static QStringList ids(const QJsonObject& listing)
    {
        QStringList ids;
        for (const QJsonValue& profile : listing.value("profiles").toArray())
            ids.append(profile.toObject().value("id").toString());
        return ids;
    }

    QTemporaryDir m_dir;

private slots:
    void init()
    {
        QVERIFY(m_dir.isValid());
        QFile::remove(settingsPath());
    }

    void listingAFreshFileWritesNothing()
    {
        const Run listed = run({});
        QCOMPARE(listed.exitCode, 0);
        QCOMPARE(listed.out,
                 R"({"current":"default","profiles":[{"id":"default","name":"Default"}]})"
                 "\n");
        QVERIFY(!QFile::exists(settingsPath()));
    }

    void editsPersistAsTheAppMakesThem()
    {
        QCOMPARE(run({"add"}).exitCode, 0);
        QCOMPARE(run({"add"}).exitCode, 0);
        const Run added = run({"add"});
        QCOMPARE(added.exitCode, 0);
        const QStringList original = ids(added.json());
        QCOMPARE(original.size(), 4);
        QCOMPARE(added.json().value("profiles").toArray().at(3).toObject().value("name"),
                 "Untitled");

        const Run renamed = run({"rename", original.at(2), "Night ✓"});
        QCOMPARE(renamed.exitCode, 0);
        QCOMPARE(renamed.json().value("profiles").toArray().at(2).toObject().value("name"),
                 "Night ✓");

        const Run moved = run({"move", "1", "4"});
        QCOMPARE(moved.exitCode, 0);
        QCOMPARE(ids(moved.json()),
                 (QStringList{"default", original.at(2), original.at(3), original.at(1)}));

        const Run deleted = run({"delete", "2"});
        QCOMPARE(deleted.exitCode, 0);
        QCOMPARE(ids(deleted.json()), (QStringList{"default", original.at(2), original.at(1)}));

        const Run used = run({"use", original.at(1)});
        QCOMPARE(used.exitCode, 0);
        QCOMPARE(used.json().value("current"), original.at(1));

        const Run listed = run({});
        QCOMPARE(listed.out, used.out);
    }

    void firstProfileStaysFirst_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("delete the first") << QStringList{"delete", "0"};
        QTest::newRow("move the first") << QStringList{"move", "0", "2"};
        QTest::newRow("move before the first") << QStringList{"move", "1", "0"};
    }

    void firstProfileStaysFirst()
    {
        QFETCH(QStringList, arguments);
        const Run before = run({"add"});
        const Run after = run(arguments);
        QCOMPARE(after.exitCode, 0);
        QCOMPARE(after.out, before.out);
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("rename an unknown id") << QStringList{"rename", "nobody", "X"} << 1;
        QTest::newRow("delete beyond the list") << QStringList{"delete", "1"} << 1;
        QTest::newRow("move beyond the list") << QStringList{"move", "1", "1"} << 1;
        QTest::newRow("delete no number") << QStringList{"delete", "one"} << 2;
        QTest::newRow("move without destination") << QStringList{"move", "1"} << 2;
        QTest::newRow("use without id") << QStringList{"use"} << 2;
        QTest::newRow("unknown action") << QStringList{"copy"} << 2;
    }

    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        const Run refused = run(arguments);
        QCOMPARE(refused.exitCode, exitCode);
        QVERIFY(refused.out.isEmpty());
        QVERIFY(!QFile::exists(settingsPath()));
    }
};

QTEST_GUILESS_MAIN(ProfilesCliTest)
#include "tst_profilescli.moc"
