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
        QByteArray err;
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
                cli.readAllStandardOutput(), cli.readAllStandardError()};
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
        QList<int> exitCodes;
        QByteArray out;
        const auto edit = [&](const QStringList& arguments) {
            const Run done = run(arguments);
            exitCodes.append(done.exitCode);
            out = done.out;
            return done.json();
        };
        const auto name = [](const QJsonObject& listing, int index) {
            return listing.value("profiles").toArray().at(index).toObject().value("name");
        };
        edit({"add"});
        edit({"add"});
        const QJsonObject added = edit({"add"});
        const QStringList original = ids(added);
        QCOMPARE(original.size(), 4);
        QCOMPARE(name(added, 3), "Untitled");
        QCOMPARE(name(edit({"rename", original.at(2), "Night ✓"}), 2), "Night ✓");
        QCOMPARE(ids(edit({"move", "1", "4"})),
                 (QStringList{"default", original.at(2), original.at(3), original.at(1)}));
        QCOMPARE(ids(edit({"delete", "2"})),
                 (QStringList{"default", original.at(2), original.at(1)}));
        QCOMPARE(edit({"use", original.at(1)}).value("current"), original.at(1));
        QCOMPARE(run({}).out, out);
        QCOMPARE(exitCodes, QList<int>(7, 0));
    }

    // On a list of two profiles. Exit code 0: the first profile stays first and nothing
    // changes (the rule is tst_settings'); otherwise a refusal that says why.
    void unchanged_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("delete the first") << QStringList{"delete", "0"} << 0 << QByteArray();
        QTest::newRow("rename an unknown id")
            << QStringList{"rename", "nobody", "X"} << 1 << QByteArray("no profile with the id");
        QTest::newRow("delete beyond the list")
            << QStringList{"delete", "2"} << 1 << QByteArray("no profile at index 2");
        QTest::newRow("move beyond the list")
            << QStringList{"move", "1", "3"} << 1 << QByteArray("no destination 3");
        QTest::newRow("delete no number")
            << QStringList{"delete", "one"} << 2 << QByteArray("whole number");
        QTest::newRow("move without destination")
            << QStringList{"move", "1"} << 2 << QByteArray("usage:");
        QTest::newRow("use without id") << QStringList{"use"} << 2 << QByteArray("usage:");
        QTest::newRow("use an unknown id")
            << QStringList{"use", "nobody"} << 2 << QByteArray("no profile with the id nobody");
        QTest::newRow("unknown action") << QStringList{"copy"} << 2 << QByteArray("copy");
    }

    void unchanged()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, message);
        const QByteArray listing = run({"add"}).out;
        QFile file(settingsPath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray stored = file.readAll();
        file.close();
        const Run after = run(arguments);
        QCOMPARE(after.exitCode, exitCode);
        QCOMPARE(after.out, exitCode == 0 ? listing : QByteArray()); // refusals print nothing
        QVERIFY2(message.isEmpty() ? after.err.isEmpty() : after.err.contains(message),
                 after.err.constData());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), stored);
    }
};

QTEST_GUILESS_MAIN(ProfilesCliTest)
#include "tst_profilescli.moc"
