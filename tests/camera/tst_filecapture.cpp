#include "platform/capturecalibration.h"
#include "platform/capturedevicechoice.h"
#include "platform/exposuretarget.h"
#include "platform/filecapturedevice.h"
#include "platform/memorypreferencestore.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace kestrum;
using Sidecar = FileCaptureDevice::Sidecar;
using OptF = std::optional<float>;
using OptS = std::optional<QString>;

Q_DECLARE_METATYPE(std::optional<float>)
Q_DECLARE_METATYPE(std::optional<QString>)

namespace {

void writeFile(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

QImage filled(int grey)
{
    QImage image(32, 24, QImage::Format_RGB32);
    image.fill(qRgb(grey, grey, grey));
    return image;
}

// The grey level of a frame of uniform grey.
int greyOf(const CameraFrame& frame)
{
    return qGreen(frame.image.pixel(frame.image.width() / 2, frame.image.height() / 2));
}

// A file camera set up and playing, with every frame it delivers.
struct Playing {
    Playing(const QString& path, PreferenceStore& preferences)
        : device(path, preferences)
        , frames(&device, &CaptureDevice::frameArrived)
    {}
    /// Sets up, starts and waits for the first frame.
    bool start()
    {
        if (!device.findCamera())
            return false;
        device.createInput();
        device.startRunning();
        return frames.wait();
    }
    CameraFrame lastFrame() const { return frames.last().at(0).value<CameraFrame>(); }

    FileCaptureDevice device;
    QSignalSpy frames;
};

} // namespace

// Recorded footage as a camera: the choice by environment, the sidecar, stills, video.
class FileCaptureTest : public QObject {
    Q_OBJECT

    std::optional<QTemporaryDir> m_dir;
    std::optional<MemoryPreferenceStore> m_prefs;

    QString at(const QString& name) const { return m_dir->filePath(name); }

private slots:
    void init()
    {
        QVERIFY(m_dir.emplace().isValid());
        m_prefs.emplace();
    }

    void choice_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<OptS>("footage");
        QTest::addColumn<bool>("warns");
        QTest::newRow("unset") << QString() << OptS() << false;
        QTest::newRow("file") << "file:/data/clip.avi" << OptS("/data/clip.avi") << false;
        QTest::newRow("file without a path") << "file:" << OptS() << true;
        QTest::newRow("unknown") << "webcam" << OptS() << true;
    }

    void choice()
    {
        QFETCH(QString, value);
        QFETCH(bool, warns);
        if (warns)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("KESTRUM_CAMERA"));
        QTEST(CaptureDeviceChoice::parse(value).footagePath, "footage");
    }

    void sidecar_data()
    {
        QTest::addColumn<QByteArray>("json"); // empty: no sidecar
        QTest::addColumn<OptF>("iso");
        QTest::addColumn<OptF>("duration");
        QTest::addColumn<OptF>("aperture");
        QTest::newRow("complete") << QByteArray(
                                         R"({"iso":200,"exposureDuration":0.004,"aperture":2.8})")
                                  << OptF(200) << OptF(0.004f) << OptF(2.8f);
        QTest::newRow("aperture missing")
            << QByteArray(R"({"iso":50,"exposureDuration":2})") << OptF(50) << OptF(2) << OptF();
        QTest::newRow("text is not a number")
            << QByteArray(R"({"iso":"100","exposureDuration":0.01})") << OptF() << OptF(0.01f)
            << OptF();
        QTest::newRow("not JSON") << QByteArray("iso=100") << OptF() << OptF() << OptF();
        QTest::newRow("no sidecar") << QByteArray() << OptF() << OptF() << OptF();
    }

    void sidecar()
    {
        QFETCH(QByteArray, json);
        QCOMPARE(Sidecar::pathFor(at("clip.png")), at("clip.png.json"));
        if (!json.isEmpty())
            writeFile(at("clip.png.json"), json);
        const Sidecar sidecar = Sidecar::read(at("clip.png"));
        QTEST(sidecar.iso, "iso");
        QTEST(sidecar.exposureDurationS, "duration");
        QTEST(sidecar.aperture, "aperture");
    }

    void apertureAndCalibrationFallBackToPreferences()
    {
        QVERIFY(filled(118).save(at("grey.png")));
        FileCaptureDevice device(at("grey.png"), *m_prefs);
        QVERIFY(device.findCamera());
        QCOMPARE(device.lensAperture(), OptF(2.0f));
        QVERIFY(m_prefs->storedKeys().isEmpty()); // fallbacks are registered, not written
        device.createInput();
        QCOMPARE(device.exposureTargetOffsetEV(), std::nullopt); // no frame yet
        QSignalSpy frames(&device, &CaptureDevice::frameArrived);
        device.startRunning();
        QVERIFY(frames.wait());
        const double measured = exposuretarget::offsetEV(exposuretarget::linearFromSrgb(118));
        QVERIFY(std::fabs(*device.exposureTargetOffsetEV() - measured) < 1e-5);
        m_prefs->setDouble(CaptureCalibration::offsetKey("file"), -0.7);
        QVERIFY(std::fabs(*device.exposureTargetOffsetEV() - (measured - 0.7)) < 1e-5);
        m_prefs->setDouble(CaptureCalibration::apertureKey("file"), 1.4);
        QCOMPARE(device.lensAperture(), OptF(1.4f));
        writeFile(Sidecar::pathFor(at("grey.png")), R"({"aperture": 5.6})");
        FileCaptureDevice described(at("grey.png"), *m_prefs);
        QVERIFY(described.findCamera());
        QCOMPARE(described.lensAperture(), OptF(5.6f));
    }

    void zoomCropsTheMiddleOfEachFrame()
    {
        QImage framed = filled(20); // a bright middle half in a dark border
        QPainter(&framed).fillRect(8, 6, 16, 12, QColor(200, 200, 200));
        QVERIFY(framed.save(at("framed.png")));
        Playing camera(at("framed.png"), *m_prefs);
        QVERIFY(camera.start());
        const float wide = *camera.device.exposureTargetOffsetEV();

        camera.device.setZoomFactor(2.0f);
        QTRY_COMPARE(camera.lastFrame().image.size(), QSize(16, 12));
        const double middle = exposuretarget::offsetEV(exposuretarget::linearFromSrgb(200));
        QTRY_VERIFY(std::fabs(*camera.device.exposureTargetOffsetEV() - middle) < 1e-4);
        QVERIFY(middle > wide);

        // A ramp moves there over time and settles on the factor asked for.
        camera.device.rampToZoomFactor(1.0f, 8.0f);
        QCOMPARE(camera.device.zoomFactor(), 2.0f);
        QTRY_COMPARE(camera.device.zoomFactor(), 1.0f);
        QTRY_COMPARE(camera.lastFrame().image.size(), QSize(32, 24));
    }

    void framesCarryTheSensorRotation_data()
    {
        using enum CameraFrame::Orientation;
        QTest::addColumn<OptF>("degrees");
        QTest::addColumn<CameraFrame::Orientation>("orientation");
        QTest::newRow("webcam default") << OptF() << up;
        QTest::newRow("quarter turn") << OptF(90) << right;
        QTest::newRow("half turn") << OptF(180) << down;
        QTest::newRow("three quarters") << OptF(270) << left;
        QTest::newRow("counter-clockwise") << OptF(-90) << left;
        QTest::newRow("over a full turn") << OptF(450) << right;
        QTest::newRow("nearest quarter") << OptF(80) << right;
        QTest::newRow("not a number") << OptF(std::nanf("")) << up;
    }

    void framesCarryTheSensorRotation()
    {
        QFETCH(OptF, degrees);
        QFETCH(CameraFrame::Orientation, orientation);
        if (degrees)
            m_prefs->setDouble(CaptureCalibration::rotationKey("file"), *degrees);
        QVERIFY(filled(118).save(at("grey.png")));
        Playing camera(at("grey.png"), *m_prefs);
        QVERIFY(camera.start());
        QCOMPARE(camera.lastFrame().orientation, orientation);
    }

    void unusableFootage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("found"); // found but undecodable: createInput throws
        QTest::newRow("nothing there") << "missing.avi" << false;
        QTest::newRow("folder without images") << "empty" << false;
        QTest::newRow("undecodable image") << "broken.png" << true;
    }

    void unusableFootage()
    {
        QFETCH(QString, name);
        QFETCH(bool, found);
        QVERIFY(QDir(m_dir->path()).mkdir("empty"));
        writeFile(at("broken.png"), "not a picture");
        FileCaptureDevice device(at(name), *m_prefs);
        QCOMPARE(device.findCamera(), found);
        if (found)
            QVERIFY_THROWS_EXCEPTION(CaptureDeviceException, device.createInput());
    }

    void folderPlaysInNameOrderAndLoops()
    {
        QVERIFY(filled(40).save(at("b.png")));
        QVERIFY(filled(20).save(at("a.png")));
        QVERIFY(filled(60).save(at("c.png")));
        writeFile(at("notes.txt"), "not a frame");
        FileCaptureDevice device(m_dir->path(), *m_prefs);
        QVERIFY(device.findCamera());
        device.createInput();
        QSignalSpy running(&device, &CaptureDevice::runningChanged);
        QList<CameraFrame> frames;
        connect(&device, &CaptureDevice::frameArrived, this,
                [&frames](const CameraFrame& frame) { frames.append(frame); });
        device.startRunning();
        QCOMPARE(running.count(), 1);
        QVERIFY(device.isRunning());
        QTRY_VERIFY(frames.size() >= 4);
        // A busy machine may drop frames, but never the first, and the order holds.
        QCOMPARE(greyOf(frames.first()), 20);
        QCOMPARE(frames.first().presentationTime, std::chrono::microseconds(0));
        constexpr std::chrono::microseconds interval(1'000'000 / 30);
        for (qsizetype i = 1; i < frames.size(); ++i) {
            const auto index = *frames.at(i).presentationTime / interval;
            QCOMPARE(*frames.at(i).presentationTime, index * interval);
            QCOMPARE(greyOf(frames.at(i)), QList<int>({20, 40, 60}).at(index % 3));
        }
    }

    void videoPlays()
    {
        const QString clip = QFINDTESTDATA("data/grey128.avi");
        QVERIFY(!clip.isEmpty());
        FileCaptureDevice device(clip, *m_prefs);
        QVERIFY(device.findCamera());
        QCOMPARE(device.iso(), OptF(100.0f));
        QCOMPARE(device.exposureDurationS(), OptF(0.01f));
        device.createInput();
        QSignalSpy frames(&device, &CaptureDevice::frameArrived);
        device.startRunning();
        QTRY_VERIFY(frames.size() >= 3);
        QTRY_VERIFY(device.isRunning());
        const auto frame = frames.last().first().value<CameraFrame>();
        QCOMPARE(frame.image.size(), QSize(64, 48));
        QVERIFY(frame.presentationTime.has_value());
        QVERIFY(std::abs(greyOf(frame) - 128) <= 2); // through JPEG and YUV
    }
};

QTEST_MAIN(FileCaptureTest)
#include "tst_filecapture.moc"
