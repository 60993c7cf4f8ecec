#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QFileSystemWatcher>
#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

// Two starts of the app on a private session bus (the test runs under dbus-run-session):
// the second hands its command line to the first and exits; without a bus both run.
class SingleInstanceTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString settingsPath() const { return m_dir.filePath("settings.ini"); }

    QProcessEnvironment environment(bool withBus) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("SIMULATOR_MODEL_IDENTIFIER", "Linux");
        environment.insert("KESTRUM_SETTINGS", settingsPath());
        environment.insert("KESTRUM_PICTURES", m_dir.filePath("Pictures"));
        environment.insert("XDG_DATA_HOME", m_dir.filePath("data"));
        environment.insert("XDG_CACHE_HOME", m_dir.filePath("cache"));
        environment.insert("XDG_RUNTIME_DIR", m_dir.path());
        if (!withBus)
            environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + m_dir.filePath("nobus"));
        return environment;
    }

    // Waits until the settings file holds `value` under `key`, as the app flushes it.
    bool settingBecomes(const QString& key, const QVariant& value)
    {
        QFileSystemWatcher watcher({m_dir.path()});
        QSignalSpy changed(&watcher, &QFileSystemWatcher::directoryChanged);
        while (QSettings(settingsPath(), QSettings::IniFormat).value(key) != value) {
            if (!changed.wait(20000))
                return false;
        }
        return true;
    }

    static void stop(QProcess& app)
    {
        app.kill();
        app.waitForFinished();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVERIFY2(QDBusConnection::sessionBus().isConnected(), "run under dbus-run-session");
    }

    void init()
    {
        QFile::remove(settingsPath());
        QSettings seed(settingsPath(), QSettings::IniFormat);
        seed.beginWriteArray("profiles");
        seed.setArrayIndex(0);
        seed.setValue("default", "Default");
        seed.setArrayIndex(1);
        seed.setValue("A1", "Film");
        seed.endArray();
    }

    void secondStartHandsOverAndExits_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("profileAfter");
        QTest::newRow("from a quick action")
            << QStringList{"--quick-action=profile", "--quick-action-info=profileID=A1"} << "A1";
        QTest::newRow("from the launcher") << QStringList() << QString();
    }

    void secondStartHandsOverAndExits()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, profileAfter);
        QDBusServiceWatcher owner("org.kestrum.Kestrum", QDBusConnection::sessionBus(),
                                  QDBusServiceWatcher::WatchForRegistration);
        QSignalSpy registered(&owner, &QDBusServiceWatcher::serviceRegistered);
        QProcess first;
        first.setProcessEnvironment(environment(true));
        first.start(KESTRUM_APP);
        QVERIFY(registered.wait(20000));

        QProcess second;
        second.setProcessEnvironment(environment(true));
        second.start(KESTRUM_APP, arguments);
        QVERIFY(second.waitForFinished(20000));
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);
        if (!profileAfter.isEmpty())
            QVERIFY(settingBecomes("currentProfileID", profileAfter));
        QCOMPARE(first.state(), QProcess::Running);
        stop(first);
    }

    void withoutASessionBusEveryStartRuns()
    {
        QProcess first;
        first.setProcessEnvironment(environment(false));
        first.start(KESTRUM_APP);
        QVERIFY(settingBecomes("appStarts", 1));
        QProcess second;
        second.setProcessEnvironment(environment(false));
        second.start(KESTRUM_APP, {"--quick-action=profile", "--quick-action-info=profileID=A1"});
        QVERIFY(settingBecomes("appStarts", 2));
        QCOMPARE(first.state(), QProcess::Running);
        QCOMPARE(second.state(), QProcess::Running);
        stop(second);
        stop(first);
    }
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "tst_singleinstance.moc"
