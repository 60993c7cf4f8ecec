#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The command-line tool as a script sees it: arguments in, one line of JSON out.
class KestrumCliTest : public QObject {
    Q_OBJECT

    struct Run {
        int exitCode = -1;
        QByteArray out;
        QByteArray err;
        QJsonValue json() const
        {
            const auto document = QJsonDocument::fromJson("[" + out + "]");
            return document.array().isEmpty() ? QJsonValue() : document.array().first();
        }
    };

    Run run(const QStringList& arguments)
    {
        QProcess cli;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KESTRUM_SETTINGS", m_dir.filePath("settings.ini"));
        cli.setProcessEnvironment(environment);
        cli.start(QStringLiteral(KESTRUM_CLI), arguments);
        if (!cli.waitForFinished(30000))
            return {};
        return {cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1,
                cli.readAllStandardOutput(), cli.readAllStandardError()};
    }

    bool appendSettings(const QByteArray& text)
    {
        QFile file(m_dir.filePath("settings.ini"));
        return file.open(QIODevice::Append) && file.write(text) == text.size();
    }

private slots:
    void init()
    {
        QVERIFY(m_dir.isValid());
        QFile::remove(m_dir.filePath("settings.ini"));
    }

    void printsOneLineOfJson_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("line");

        QTest::newRow("cut aperture scale, 1.2 … 2 runs from 1")
            << QStringList{"scale", "aperture", "full", "--min", "1.2", "--max", "2"}
            << QByteArray(
                   R"([{"type":"full","value":1.0,"display":"1","id":"Aperturefull11000"},)"
                   R"({"type":"full","value":1.41,"display":"1.4","id":"Aperturefull1.41410"},)"
                   R"({"type":"full","value":2.0,"display":"2","id":"Aperturefull22000"}])");
        QTest::newRow("tv, EV 10 at 1/125")
            << QStringList{"calculate", "--lv", "10", "--mode", "tv", "--speed", "0.0078125"}
            << QByteArray(R"({"ev":10.0,"result":{"type":"full","value":2.828,"display":"2.8",)"
                          R"("id":"Aperturefull2.82828"},"error":null})");
        QTest::newRow("av, 64 s needed")
            << QStringList{"calculate", "--lv", "0", "--mode", "av", "--aperture", "8"}
            << QByteArray(R"({"ev":0.0,"result":null,"error":"underexposed"})");
        QTest::newRow("av, ISO and compensation move EV")
            << QStringList{"calculate", "--lv",  "10",  "--mode",         "av", "--aperture",
                           "4",         "--iso", "400", "--compensation", "1"}
            << QByteArray(R"({"ev":11.0,"result":{"type":"full","value":0.0078125,"display":"125",)"
                          R"("id":"ShutterSpeedfull1258"},"error":null})");
        QTest::newRow("m, half a stop bright")
            << QStringList{"calculate",  "--lv", "10.5",    "--mode",  "m",
                           "--aperture", "4",    "--speed", "0.015625"}
            << QByteArray(R"({"ev":10.5,"result":{"type":"full","value":0.5,"display":"0.5",)"
                          R"("id":"Compensationfull0.5500"},"error":null})");
        QTest::newRow("m, NaN deviation passes as a value")
            << QStringList{"calculate",  "--lv", "nan",     "--mode",  "m",
                           "--aperture", "4",    "--speed", "0.015625"}
            << QByteArray(R"({"ev":null,"result":{"type":"full","value":null,"display":"nan",)"
                          R"("id":null},"error":null})");
        QTest::newRow("get a step")
            << QStringList{"settings", "get", "fractionForISO"} << QByteArray(R"("full")");
        QTest::newRow("get a current value has no display")
            << QStringList{"settings", "get", "iso", "--profile", "other"}
            << QByteArray(R"({"type":"full","value":100.0,"display":"","id":"ISOfull100000"})");
    }

    void printsOneLineOfJson()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, line);
        const Run result = run(arguments);
        QCOMPARE(result.err, QByteArray());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, line + '\n');
    }

    void settingsPersistAndSnap()
    {
        QCOMPARE(run({"settings", "set", "minimumISO", "60"}).exitCode, 0);
        QCOMPARE(run({"settings", "get", "minimumISO"}).json().toObject().value("display"), "64");

        const Run set = run({"settings", "set", "minimumISO", "200", "--profile", "studio"});
        QCOMPARE(set.json().toObject().value("iso").toObject().value("value").toDouble(), 200.0);

        const Run step = run({"settings", "set", "fractionForISO", "half"});
        QCOMPARE(step.json().toObject().value("fractionForISO"), "half");
        QCOMPARE(step.json().toObject().value("minimumISO").toObject().value("display"), "70");
        QCOMPARE(run({"settings", "get", "mode", "--profile", "studio"}).out, "\"av\"\n");
    }

    void dumpListsTheThirteenSettingsInOrder()
    {
        const Run dump = run({"settings", "dump"});
        const QJsonObject object = dump.json().toObject();
        qsizetype previous = -1;
        for (const char* key :
             {"fractionForAperture", "fractionForSpeed", "fractionForISO", "minimumSpeed",
              "maximumSpeed", "minimumAperture", "maximumAperture", "minimumISO", "maximumISO",
              "mode", "iso", "aperture", "speed"}) {
            const qsizetype at = dump.out.indexOf("\"" + QByteArray(key) + "\":");
            QVERIFY2(object.contains(key) && at > previous, key);
            previous = at;
        }
        QVERIFY(!QFile::exists(m_dir.filePath("settings.ini"))); // reading writes nothing
    }

    void refusesWhatItCannotDo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("no command") << QStringList{} << 2 << QByteArray("usage:");
        QTest::newRow("unknown command")
            << QStringList{"meters"} << 2 << QByteArray("unknown command");
        QTest::newRow("unknown component")
            << QStringList{"scale", "focus", "full"} << 2 << QByteArray("COMPONENT");
        QTest::newRow("one bound only")
            << QStringList{"scale", "iso", "full", "--min", "50"} << 2 << QByteArray("go together");
        QTest::newRow("not a number")
            << QStringList{"calculate", "--lv", "ten", "--mode", "av", "--aperture", "4"} << 2
            << QByteArray("number");
        QTest::newRow("unknown mode")
            << QStringList{"calculate", "--lv", "10", "--mode", "p", "--aperture", "4"} << 2
            << QByteArray("--mode");
        QTest::newRow("av without aperture")
            << QStringList{"calculate", "--lv", "10", "--mode", "av"} << 2
            << QByteArray("--aperture");
        QTest::newRow("unknown setting")
            << QStringList{"settings", "get", "shutter"} << 2 << QByteArray("no setting");
        QTest::newRow("unknown step") << QStringList{"settings", "set", "fractionForISO", "quarter"}
                                      << 2 << QByteArray("step");
        QTest::newRow("reversed bounds")
            << QStringList{"scale", "aperture", "full", "--min", "16", "--max", "2"} << 1
            << QByteArray("reverse order");
    }

    void refusesWhatItCannotDo()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, message);
        const Run result = run(arguments);
        QCOMPARE(result.exitCode, exitCode);
        QCOMPARE(result.out, QByteArray());
        QVERIFY2(result.err.contains(message), result.err.constData());
    }

    void meterPublishesTheControllersExposure_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("display");
        QTest::addColumn<QJsonValue>("error");
        QTest::newRow("av at the mock's LV 10") << QStringList{"meter"} << "speed"
                                                << "125" << QJsonValue();
        QTest::newRow("tv too bright shows 45")
            << QStringList{"meter", "--lv", "20", "--mode", "tv"} << "aperture"
            << "45" << QJsonValue("overexposed");
        QTest::newRow("m a stop bright")
            << QStringList{"meter", "--lv", "11", "--mode", "m", "--seconds", "0.3"}
            << "manualExposure"
            << "1" << QJsonValue();
    }

    void meterPublishesTheControllersExposure()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, field);
        QFETCH(QString, display);
        QFETCH(QJsonValue, error);
        const Run result = run(arguments);
        QCOMPARE(result.exitCode, 0);
        const QJsonObject published = result.json().toObject();
        QCOMPARE(published.keys().size(), 7);
        QCOMPARE(published.value(field).toObject().value("display").toString(), display);
        QCOMPARE(published.value("exposureError"),
                 error.isUndefined() ? QJsonValue(QJsonValue::Null) : error);
    }

    void reversedLimitsInTheFileFailCleanly()
    {
        QCOMPARE(run({"settings", "set", "minimumAperture", "16"}).exitCode, 0);
        QVERIFY(appendSettings("default.maximumAperture=2\n"));
        const Run result = run({"calculate", "--lv", "10", "--mode", "tv", "--speed", "0.01"});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.err.contains("reverse order"));
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(KestrumCliTest)
#include "tst_kestrumcli.moc"
