#include "support/testphotos.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrum;
using namespace kestrum::test;

// Logging, listing and reading photos through kestrum-cli, checked by exiftool too.
class AlbumCliTest : public QObject {
    Q_OBJECT

    struct Run {
        int exitCode = -1;
        QByteArray out;
        QByteArray err;
        QJsonDocument json() const { return QJsonDocument::fromJson(out); }
    };

    const Exiv2ImageMetadata m_metadata;
    std::unique_ptr<QTemporaryDir> m_dir;

    QString album() const { return m_dir->filePath("pictures/Kestrum"); }

    Run run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KESTRUM_PICTURES", m_dir->filePath("pictures"));
        environment.insert("KESTRUM_SETTINGS", m_dir->filePath("settings.ini"));
        environment.insert("TMPDIR", m_dir->path());
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_dir->path());
        process.start(program, arguments);
        if (!process.waitForFinished(60000))
            return {};
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput(), process.readAllStandardError()};
    }
    Run cli(const QStringList& arguments) { return run(KESTRUM_CLI, arguments); }

    QString scene()
    {
        const QString path = m_dir->filePath("scene.png");
        QImage image(320, 240, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        image.save(path);
        return path;
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }

    void logListAndRead()
    {
        QCOMPARE(cli({"album"}).out, "[]\n");
        const Run logged = cli({"log", scene(), "--iso", "200", "--aperture", "2.8", "--speed",
                                "500", "--compensation", "0.33", "--latitude", "-33.86",
                                "--longitude", "151.21", "--altitude", "12"});
        QCOMPARE(logged.err, QByteArray());
        QCOMPARE(logged.exitCode, 0);
        const QString first = logged.json().object().value("localIdentifier").toString();
        QVERIFY(QFileInfo(m_dir->filePath("Kestrum.jpeg")).isFile());

        const Run tags =
            run("exiftool", {"-n", "-T", "-ISO", "-FNumber", "-ExposureTime",
                             "-ExposureCompensation", "-Model", "-ExifVersion", "-ImageWidth",
                             "-GPSLatitude", "-GPSLongitude", album() + "/" + first});
        QCOMPARE(tags.out,
                 "200\t2.8\t0.002\t0.33\tKestrum Light Meter\t0230\t320\t-33.86\t151.21\n");

        const Run second = cli({"log", scene(), "--iso", "100", "--aperture", "11", "--speed", "2s",
                                "--compensation", "-0.7"});
        QCOMPARE(second.exitCode, 0);
        const QJsonArray listed = cli({"album"}).json().array();
        QCOMPARE(listed.size(), 2);
        const QJsonObject newest = listed.at(0).toObject();
        QCOMPARE(newest.value("localIdentifier"), second.json().object().value("localIdentifier"));
        QCOMPARE(newest.value("latitude"), QJsonValue(QJsonValue::Null));
        QVERIFY(newest.value("date").toString().endsWith('Z'));
        const QJsonObject oldest = listed.at(1).toObject();
        QCOMPARE(oldest.value("latitude").toDouble(), -33.86);
        QCOMPARE(oldest.value("longitude").toDouble(), 151.21);
        QCOMPARE((QStringList{oldest.value("iso").toString(), oldest.value("aperture").toString(),
                              oldest.value("speed").toString(),
                              oldest.value("compensation").toString()}),
                 (QStringList{"200", "2.8", "1/500s", "+0.33 EV"}));

        const Run read = cli({"read", album() + "/" + first});
        QCOMPARE(read.exitCode, 0);
        QCOMPARE(read.json().object(), oldest);
    }

    // What cannot be read or logged, or is asked wrongly (code 2), leaves a message and no photo.
    void refuses_data()
    {
        QTest::addColumn<QString>("arguments");    // run in the test's folder
        QTest::addColumn<QByteArray>("photo");     // the bytes of photo.jpeg; none: no such file
        QTest::addColumn<bool>("picturesNowhere"); // Pictures a link to nowhere
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("message");
        const QString log = "log photo.jpeg --iso 200 --aperture 2.8 --speed 500 --compensation 0";
        const QByteArray plain = plainJpeg();
        QTest::newRow("read a photo not logged")
            << "read photo.jpeg" << plain << false << 1 << QByteArray("not a logged photo");
        QTest::newRow("read the meter's own exposure time 0")
            << "read photo.jpeg"
            << loggedJpeg(m_metadata, exposureMetadata("200", "2.8", "fast", 0)) << false << 1
            << QByteArray("exposure time of 0.0 s");
        QTest::newRow("log an unreadable image")
            << log << QByteArray() << false << 1 << QByteArray("cannot read");
        QTest::newRow("log into a Pictures link to nowhere")
            << log << plain << true << 1 << QByteArray("no permission");
        QTest::newRow("log without a speed")
            << "log photo.jpeg --iso 1 --aperture 1 --compensation 0" << plain << false << 2
            << QByteArray("missing --speed");
        QTest::newRow("latitude alone")
            << log + " --latitude 1" << plain << false << 2 << QByteArray("go together");
        QTest::newRow("compensation as text")
            << "log photo.jpeg --iso 1 --aperture 1 --speed 1 --compensation +⅓" << plain << false
            << 2 << QByteArray("needs a number");
        QTest::newRow("album takes no words")
            << "album all" << plain << false << 2 << QByteArray("unexpected argument");
        QTest::newRow("read needs a file")
            << "read" << plain << false << 2 << QByteArray("missing argument");
    }

    void refuses()
    {
        QFETCH(QString, arguments);
        QFETCH(QByteArray, photo);
        QFETCH(bool, picturesNowhere);
        QFETCH(QByteArray, message);
        QVERIFY(photo.isEmpty() || writeFile(m_dir->filePath("photo.jpeg"), photo));
        if (picturesNowhere)
            QVERIFY(QFile::link(m_dir->filePath("nowhere"), m_dir->filePath("pictures")));
        const Run refused = cli(arguments.split(' '));
        QTEST(refused.exitCode, "exitCode");
        QVERIFY2(refused.err.contains(message), refused.err);
        QCOMPARE(refused.out, QByteArray());
        QVERIFY(!QDir(album()).exists() || QDir(album()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(AlbumCliTest)
#include "tst_albumcli.moc"
