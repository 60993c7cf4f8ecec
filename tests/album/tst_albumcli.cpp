#include "support/testphotos.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
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
        QVERIFY(QFileInfo(album() + "/" + first).isFile());
        QVERIFY(QFileInfo(m_dir->filePath("Kestrum.jpeg")).isFile());

        const Run tags = run("exiftool", {"-n", "-json", "-G", album() + "/" + first});
        const QJsonObject tag = QJsonDocument::fromJson(tags.out).array().first().toObject();
        QCOMPARE(tag.value("EXIF:ISO").toDouble(), 200.0);
        QCOMPARE(tag.value("EXIF:FNumber").toDouble(), 2.8);
        QCOMPARE(tag.value("EXIF:ExposureTime").toDouble(), 0.002);
        QCOMPARE(tag.value("EXIF:ExposureCompensation").toDouble(), 0.33);
        QCOMPARE(tag.value("EXIF:Model").toString(), "Kestrum Light Meter");
        QCOMPARE(tag.value("EXIF:ExifVersion").toString(), "0230");
        QCOMPARE(tag.value("File:ImageWidth").toInt(), 320);
        QVERIFY(std::fabs(tag.value("Composite:GPSLatitude").toDouble() + 33.86) < 1e-6);
        QVERIFY(std::fabs(tag.value("Composite:GPSLongitude").toDouble() - 151.21) < 1e-6);

        const Run second = cli({"log", scene(), "--iso", "100", "--aperture", "11", "--speed", "2s",
                                "--compensation", "-0.7"});
        QCOMPARE(second.exitCode, 0);
        const QJsonArray listed = cli({"album"}).json().array();
        QCOMPARE(listed.size(), 2);
        const QJsonObject newest = listed.at(0).toObject();
        QCOMPARE(newest.value("localIdentifier"), second.json().object().value("localIdentifier"));
        QCOMPARE(newest.value("speed"), "2.0s");
        QCOMPARE(newest.value("compensation"), "-0.7 EV");
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

    void readRefuses_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("a photo not logged") << plainJpeg() << QByteArray("not a logged photo");
        QTest::newRow("not an image") << QByteArray("f/8") << QByteArray("not a logged photo");
        QTest::newRow("exposure time 0 stops the reader")
            << loggedJpeg(m_metadata, exposureMetadata("200", "2.8", "fast", 0))
            << QByteArray("exposure time of 0.0 s");
        QTest::newRow("another camera's exposure time 0 does not")
            << loggedJpeg(m_metadata, {{"{Exif}", QVariantMap{{"ISOSpeed", 200},
                                                              {"FNumber", 2.8},
                                                              {"ExposureTime", 0.0},
                                                              {"ExposureBiasValue", 0.0}}},
                                       {"{TIFF}", QVariantMap{{"Model", "Other Camera"}}}})
            << QByteArray("not a logged photo");
    }

    void readRefuses()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, message);
        const QString path = m_dir->filePath("photo.jpeg");
        QVERIFY(writeFile(path, bytes));
        const Run read = cli({"read", path});
        QCOMPARE(read.exitCode, 1);
        QVERIFY2(read.err.contains(message), read.err);
        QCOMPARE(read.out, QByteArray());
    }

    void usage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("log without a speed")
            << QStringList{"log", "x.png", "--iso", "1", "--aperture", "1", "--compensation", "0"};
        QTest::newRow("latitude alone")
            << QStringList{"log",     "x.png", "--iso",          "1", "--aperture", "1",
                           "--speed", "1",     "--compensation", "0", "--latitude", "1"};
        QTest::newRow("compensation as text")
            << QStringList{"log",     "x.png", "--iso",          "1", "--aperture", "1",
                           "--speed", "1",     "--compensation", "+⅓"};
        QTest::newRow("album takes no words") << QStringList{"album", "all"};
        QTest::newRow("read needs a file") << QStringList{"read"};
    }

    void usage()
    {
        QFETCH(QStringList, arguments);
        QCOMPARE(cli(arguments).exitCode, 2);
    }

    // Opened, the album takes in the photos of the folder earlier versions used, and
    // leaves out what it cannot show rather than stopping.
    void albumMovesOldPhotosUpAndSkipsOthers()
    {
        const Run logged = cli({"log", scene(), "--iso", "200", "--aperture", "2.8", "--speed",
                                "500", "--compensation", "0"});
        QCOMPARE(logged.exitCode, 0);
        const QString first = logged.json().object().value("localIdentifier").toString();
        QVERIFY(QDir().mkpath(album() + "/Kestrum"));
        QVERIFY(QFile::copy(album() + "/" + first, album() + "/Kestrum/old.jpeg"));
        const QString camera = album() + "/camera.jpeg";
        QVERIFY(writeFile(camera, plainJpeg()));
        const Run tagged =
            run("exiftool", {"-q", "-overwrite_original", "-ExposureTime=0", "-ISOSpeed=200",
                             "-FNumber=2.8", "-ExposureCompensation=0", "-Model=Other", camera});
        QCOMPARE(tagged.exitCode, 0);

        const Run listed = cli({"album"});
        QCOMPARE(listed.err, QByteArray());
        QCOMPARE(listed.exitCode, 0);
        QStringList identifiers;
        for (const QJsonValue& exposure : listed.json().array())
            identifiers.append(exposure.toObject().value("localIdentifier").toString());
        identifiers.sort();
        QCOMPARE(identifiers, (QStringList{first, "old.jpeg"}));
        QVERIFY(!QFileInfo::exists(album() + "/Kestrum"));
    }

    void logFails_data()
    {
        QTest::addColumn<QString>("image");
        QTest::addColumn<QString>("picturesLinkTo"); // empty: no link, the folder is made
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("unreadable image") << "missing.png"
                                          << "" << QByteArray("cannot read");
        QTest::newRow("Pictures a link to nowhere") << "scene.png"
                                                    << "nowhere" << QByteArray("no permission");
    }

    void logFails()
    {
        QFETCH(QString, image);
        QFETCH(QString, picturesLinkTo);
        QFETCH(QByteArray, message);
        scene();
        if (!picturesLinkTo.isEmpty())
            QVERIFY(QFile::link(m_dir->filePath(picturesLinkTo), m_dir->filePath("pictures")));
        const Run logged = cli({"log", m_dir->filePath(image), "--iso", "200", "--aperture", "2.8",
                                "--speed", "500", "--compensation", "0"});
        QCOMPARE(logged.exitCode, 1);
        QVERIFY2(logged.err.contains(message), logged.err);
        QVERIFY(!QDir(album()).exists() || QDir(album()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(AlbumCliTest)
#include "tst_albumcli.moc"
