#include <QProcess>
#include <QTest>

class ExposureFatalTest : public QObject {
    Q_OBJECT

private slots:
    void stopsTheProgram_data()
    {
        QTest::addColumn<QString>("breach");
        QTest::addColumn<QString>("message");
        QTest::newRow("limits in reverse order") << "reversed-limits"
                                                 << "reverse order";
        QTest::newRow("nearest entry of an empty scale") << "empty-scale"
                                                         << "empty";
        QTest::newRow("identity of NaN") << "identity-of-nan"
                                         << "no identity";
        QTest::newRow("identity beyond 64 bits") << "identity-out-of-range"
                                                 << "no identity";
        QTest::newRow("scale without a profile") << "no-profile"
                                                 << "before a profile";
    }

    void stopsTheProgram()
    {
        QFETCH(QString, breach);
        QFETCH(QString, message);
        QProcess probe;
        probe.start(QStringLiteral(FATAL_PROBE), {breach});
        QVERIFY(probe.waitForFinished(30000));
        QVERIFY(probe.exitStatus() == QProcess::CrashExit || probe.exitCode() != 0);
        QVERIFY(!probe.readAllStandardOutput().contains("survived"));
        QVERIFY2(probe.readAllStandardError().contains(message.toUtf8()), qPrintable(breach));
    }
};

QTEST_GUILESS_MAIN(ExposureFatalTest)
#include "tst_exposurefatal.moc"
