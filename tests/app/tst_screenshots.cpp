#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

// Pictures of the main screen as the app draws it on an X display (run under xvfb-run,
// where the preview shows the footage's frames), written to SCREENSHOT_DIR for people to
// look at; and a log made by pressing the Log button with a file camera.
namespace {

// Footage with the exposure its camera used, in a sidecar beside a copy of it.
struct Footage {
    QString source;
    QByteArray sidecar;
};

// An even grey scene at ISO 100, 1/100 s and f/2: LV 8.6 plus the scene's own 0.3 stop
// above 18 % grey, 8.9 in all.
const Footage kGrey{QStringLiteral(KESTRUM_TEST_DATA "/grey128.avi"),
                    R"({"iso": 100, "exposureDuration": 0.01, "aperture": 2.0})"};
const Footage kFace{QStringLiteral(KESTRUM_FOOTAGE "/Megamind.avi"),
                    R"({"iso": 200, "exposureDuration": 0.02, "aperture": 2.0})"};
const Footage kStill{QStringLiteral(KESTRUM_FOOTAGE "/messi5.jpg"),
                     R"({"iso": 100, "exposureDuration": 0.004, "aperture": 4.0})"};
// The same still taken at 1/10000 s and f/16: far brighter than any shutter can stop.
const Footage kGlare{QStringLiteral(KESTRUM_FOOTAGE "/messi5.jpg"),
                     R"({"iso": 100, "exposureDuration": 0.0001, "aperture": 16.0})"};

class Run {
public:
    Run()
    {
        m_environment.insert("QT_QPA_PLATFORM", "xcb");
        m_environment.insert("KESTRUM_SETTINGS", m_dir.filePath("settings.ini"));
        m_environment.insert("KESTRUM_PICTURES", m_dir.filePath("Pictures"));
        m_environment.insert("XDG_RUNTIME_DIR", m_dir.path());
        m_environment.insert("XDG_DATA_HOME", m_dir.filePath("data"));
        m_environment.insert("XDG_CACHE_HOME", m_dir.filePath("cache"));
        m_environment.insert("XDG_CONFIG_HOME", m_dir.filePath("config"));
        m_environment.remove("SIMULATOR_MODEL_IDENTIFIER");
        m_environment.remove("KESTRUM_CAMERA");
    }

    QString path(const QString& name) const { return m_dir.filePath(name); }
    void set(const QString& key, const QString& value) { m_environment.insert(key, value); }

    void useFootage(const Footage& footage)
    {
        const QString copy = m_dir.filePath(QFileInfo(footage.source).fileName());
        QVERIFY(QFile::copy(footage.source, copy));
        QFile sidecar(copy + ".json");
        QVERIFY(sidecar.open(QIODevice::WriteOnly));
        sidecar.write(footage.sidecar);
        set("KESTRUM_CAMERA", "file:" + copy);
    }

    // `kestrum-cli` on this run's settings.
    void cli(const QStringList& arguments)
    {
        QProcess tool;
        tool.setProcessEnvironment(m_environment);
        tool.start(QStringLiteral(KESTRUM_CLI), arguments);
        QVERIFY(tool.waitForFinished(30000));
        QCOMPARE(tool.exitCode(), 0);
    }

    // Starts the app, lets it run for `afterMs` (tapping at each of `taps`, evenly spread
    // before then), and saves a picture of its window.
    void screenshot(const QString& picture, int afterMs, const QStringList& taps)
    {
        QProcess app;
        app.setProcessEnvironment(m_environment);
        QStringList arguments{"--screenshot", picture, "--screenshot-after",
                              QString::number(afterMs)};
        for (const QString& tap : taps)
            arguments << "--tap" << tap;
        // Waits with the event loop running, so that a local server can answer the app.
        QSignalSpy finished(&app, &QProcess::finished);
        app.start(QStringLiteral(KESTRUM_APP), arguments);
        QVERIFY(finished.wait(90000));
        const QByteArray errors = app.readAllStandardError();
        QVERIFY2(app.exitCode() == 0, errors.constData());
        for (const char* problem :
             {"ReferenceError", "TypeError", "Unable to assign", "is not a type", "Binding loop"})
            QVERIFY2(!errors.contains(problem), errors.constData());
    }

private:
    QTemporaryDir m_dir;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

// Map tiles and place names on the loopback address: every tile is the same pale square
// with a road across it, and every place is the Notre-Dame cathedral in Paris.
class LocalMapServer : public QObject {
public:
    LocalMapServer()
    {
        QImage tile(256, 256, QImage::Format_RGB32);
        tile.fill(QColor(0xe8, 0xe4, 0xd8));
        QPainter painter(&tile);
        painter.setPen(QPen(QColor(0xff, 0xff, 0xff), 10));
        painter.drawLine(0, 200, 256, 60);
        painter.end();
        QBuffer buffer(&m_tile);
        buffer.open(QIODevice::WriteOnly);
        tile.save(&buffer, "PNG");
        QObject::connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = m_server.nextPendingConnection())
                QObject::connect(socket, &QTcpSocket::readyRead, socket,
                                 [this, socket] { answer(*socket); });
        });
        m_server.listen(QHostAddress::LocalHost);
    }
    QString url() const { return QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort()); }

private:
    void answer(QTcpSocket& socket)
    {
        const QByteArray request = socket.readAll();
        const bool place = request.startsWith("GET /reverse");
        const QByteArray body =
            place ? QByteArray(R"({"name":"Notre-Dame","address":{"city":"Paris"}})") : m_tile;
        socket.write("HTTP/1.1 200 OK\r\nContent-Type: " +
                     QByteArray(place ? "application/json" : "image/png") +
                     "\r\nCache-Control: max-age=604800\r\nContent-Length: " +
                     QByteArray::number(body.size()) + "\r\n\r\n" + body);
        socket.disconnectFromHost();
    }

    QTcpServer m_server;
    QByteArray m_tile;
};

// In a 390 × 844 window: the Log button (centred, 50 points above the bottom), the
// Logged photos button (left of it) and the browser's List mode.
const QString kLogButton = QStringLiteral("195,794");
const QString kLoggedPhotosButton = QStringLiteral("76,801");
const QString kListMode = QStringLiteral("195,111");
const QString kMapMode = QStringLiteral("290,111");
const QString kFirstGridPhoto = QStringLiteral("65,210");

} // namespace

class ScreenshotsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(QDir().mkpath(QStringLiteral(SCREENSHOT_DIR))); }

    void mainScreen_data()
    {
        QTest::addColumn<QString>("name");
        // "still", "glare", "face", "missing" (a camera that cannot be set up), or none:
        // the simulator.
        QTest::addColumn<QString>("footage");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("tap");
        QTest::addColumn<int>("afterMs");

        QTest::newRow("aperture priority") << "main-av"
                                           << "still"
                                           << "av"
                                           << "" << 2000;
        QTest::newRow("shutter priority") << "main-tv"
                                          << "still"
                                          << "tv"
                                          << "" << 2000;
        QTest::newRow("manual") << "main-m"
                                << "still"
                                << "m"
                                << "" << 2000;
        QTest::newRow("exposure error") << "main-error"
                                        << "glare"
                                        << "av"
                                        << "" << 2000;
        QTest::newRow("tap marker") << "main-tap"
                                    << "still"
                                    << "av"
                                    << "200,260" << 2000;
        QTest::newRow("face outline") << "main-face"
                                      << "face"
                                      << "av"
                                      << "" << 5000;
        QTest::newRow("simulator") << "main-simulator"
                                   << ""
                                   << "av"
                                   << "" << 1500;
        QTest::newRow("camera error") << "main-camera-error"
                                      << "missing"
                                      << "av"
                                      << "" << 1500;
        // The settings sheet over a file camera, with its calibration section.
        QTest::newRow("settings") << "settings-camera"
                                  << "still"
                                  << "av"
                                  << "358,24" << 2500;
    }
    void mainScreen()
    {
        QFETCH(QString, name);
        QFETCH(QString, footage);
        QFETCH(QString, mode);
        QFETCH(QString, tap);
        QFETCH(int, afterMs);

        Run run;
        if (footage.isEmpty())
            run.set("SIMULATOR_MODEL_IDENTIFIER", "iPhone14,3");
        else if (footage == "missing")
            run.set("KESTRUM_CAMERA", "file:" + run.path("missing.avi"));
        else
            run.useFootage(footage == "face" ? kFace : footage == "glare" ? kGlare : kStill);
        run.cli({"settings", "set", "mode", mode});
        const QString picture = QStringLiteral(SCREENSHOT_DIR "/") + name + ".png";
        QFile::remove(picture);
        run.screenshot(picture, afterMs, tap.isEmpty() ? QStringList() : QStringList{tap});
        const QImage image(picture);
        QVERIFY(!image.isNull());
        QVERIFY(image.height() > image.width());
    }

    // The browser on 50 logged photos, as a grid and as a list.
    void browserWithFiftyPhotos_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("taps");
        QTest::newRow("grid") << "browser-grid-50" << QStringList{kLoggedPhotosButton};
        QTest::newRow("list") << "browser-list-50" << QStringList{kLoggedPhotosButton, kListMode};
        QTest::newRow("map") << "browser-map-50" << QStringList{kLoggedPhotosButton, kMapMode};
        QTest::newRow("detail") << "browser-detail-50"
                                << QStringList{kLoggedPhotosButton, kFirstGridPhoto};
    }
    void browserWithFiftyPhotos()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, taps);
        Run run;
        run.useFootage(kStill);
        LocalMapServer server;
        run.set("KESTRUM_TILE_URL", server.url() + "/{z}/{x}/{y}.png");
        run.set("KESTRUM_GEOCODER_URL", server.url());
        const QString picture = QStringLiteral(KESTRUM_FOOTAGE "/messi5.jpg");
        for (int i = 0; i < 50; ++i) {
            run.cli({"log", picture, "--iso", "100", "--aperture",
                     QString::number(1.4 * (1 + i % 8)), "--speed", "125", "--compensation", "0",
                     "--latitude", QString::number(48.85 + i * 0.001), "--longitude", "2.35"});
        }
        run.screenshot(QStringLiteral(SCREENSHOT_DIR "/") + name + ".png", 4000, taps);
    }

    // Log pressed on the grey scene in aperture priority: f/2.8 and ISO 100 as the
    // profile sets them, and the speed for LV 8.9, which is 1/60 s (LV 8.9 at ISO 100 is
    // EV 8.9; 2.8² / 2^8.9 = 0.016 s, nearest full stop 1/60).
    void logButtonStoresTheShownExposure()
    {
        Run run;
        run.useFootage(kGrey);
        run.screenshot(QStringLiteral(SCREENSHOT_DIR "/main-logged.png"), 4000, {kLogButton});
        const QDir album(run.path("Pictures/Kestrum"));
        const QStringList photos = album.entryList({"*.jpg", "*.jpeg"}, QDir::Files);
        QCOMPARE(photos.size(), 1);

        QProcess read;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KESTRUM_SETTINGS", run.path("settings.ini"));
        read.setProcessEnvironment(environment);
        read.start(QStringLiteral(KESTRUM_CLI), {"read", album.filePath(photos.first())});
        QVERIFY(read.waitForFinished(30000));
        const QByteArray metadata = read.readAllStandardOutput();
        QVERIFY2(metadata.contains(R"("aperture":"2.8")"), metadata.constData());
        QVERIFY2(metadata.contains(R"("iso":"100")"), metadata.constData());
        QVERIFY2(metadata.contains(R"("speed":"1/60s")"), metadata.constData());
        QVERIFY2(metadata.contains(R"("compensation":"±0 EV")"), metadata.constData());
    }
};

QTEST_GUILESS_MAIN(ScreenshotsTest)
#include "tst_screenshots.moc"
