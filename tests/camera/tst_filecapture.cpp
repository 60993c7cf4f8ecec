#include "platform/capturecalibration.h"
#include "platform/capturedevicechoice.h"
#include "platform/exposuretarget.h"
#include "platform/filecapturedevice.h"
#include "platform/memorypreferencestore.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace kestrum;
using Sidecar = FileCaptureDevice::Sidecar;

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

} // namespace

// Recorded footage as a camera: the choice by environment, the sidecar, stills, video.
class FileCaptureTest : public QObject {
    Q_OBJECT

private slots:
    void choice_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<std::optional<QString>>("footage");
        QTest::addColumn<bool>("warns");
        QTest::newRow("unset") << QString() << std::optional<QString>() << false;
        QTest::newRow("file") << "file:/data/clip.avi" << std::optional<QString>("/data/clip.avi")
                              << false;
        QTest::newRow("file without a path") << "file:" << std::optional<QString>() << true;
        QTest::newRow("unknown") << "webcam" << std::optional<QString>() << true;
    }

    void choice()
    {
        QFETCH(QString, value);
        QFETCH(std::optional<QString>, footage);
        QFETCH(bool, warns);
        if (warns)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("KESTRUM_CAMERA"));
        QCOMPARE(CaptureDeviceChoice::parse(value).footagePath, footage);
    }

    void sidecar_data()
    {
        QTest::addColumn<QByteArray>("json"); // empty: no sidecar
        QTest::addColumn<std::optional<float>>("iso");
        QTest::addColumn<std::optional<float>>("duration");
        QTest::addColumn<std::optional<float>>("aperture");
        const std::optional<float> none;
        QTest::newRow("complete") << QByteArray(
                                         R"({"iso":200,"exposureDuration":0.004,"aperture":2.8})")
                                  << std::optional(200.0f) << std::optional(0.004f)
                                  << std::optional(2.8f);
        QTest::newRow("aperture missing") << QByteArray(R"({"iso":50,"exposureDuration":2})")
                                          << std::optional(50.0f) << std::optional(2.0f) << none;
        QTest::newRow("text is not a number")
            << QByteArray(R"({"iso":"100","exposureDuration":0.01})") << none
            << std::optional(0.01f) << none;
        QTest::newRow("not JSON") << QByteArray("iso=100") << none << none << none;
        QTest::newRow("no sidecar") << QByteArray() << none << none << none;
    }

    void sidecar()
    {
        QFETCH(QByteArray, json);
        QFETCH(std::optional<float>, iso);
        QFETCH(std::optional<float>, duration);
        QFETCH(std::optional<float>, aperture);
        QTemporaryDir dir;
        const QString media = dir.filePath("clip.png");
        QCOMPARE(Sidecar::pathFor(media), dir.filePath("clip.png.json"));
        if (!json.isEmpty())
            writeFile(Sidecar::pathFor(media), json);
        const Sidecar sidecar = Sidecar::read(media);
        QCOMPARE(sidecar.iso, iso);
        QCOMPARE(sidecar.exposureDurationS, duration);
        QCOMPARE(sidecar.aperture, aperture);
    }

    void apertureAndCalibrationFallBackToPreferences()
    {
        QTemporaryDir dir;
        const QString media = dir.filePath("grey.png");
        QVERIFY(filled(118).save(media));
        MemoryPreferenceStore preferences;
        FileCaptureDevice device(media, preferences);
        QVERIFY(device.findCamera());
        QCOMPARE(device.lensAperture(), std::optional(2.0f));
        QVERIFY(preferences.storedKeys().isEmpty()); // fallbacks are registered, not written

        preferences.setDouble(CaptureCalibration::apertureKey("file"), 1.4);
        QCOMPARE(device.lensAperture(), std::optional(1.4f));

        writeFile(Sidecar::pathFor(media), R"({"aperture": 5.6})");
        FileCaptureDevice described(media, preferences);
        QVERIFY(described.findCamera());
        QCOMPARE(described.lensAperture(), std::optional(5.6f));
    }

    void calibrationOffsetAddsToTheMeasuredOffset()
    {
        QTemporaryDir dir;
        const QString media = dir.filePath("grey.png");
        QVERIFY(filled(118).save(media));
        MemoryPreferenceStore preferences;
        FileCaptureDevice device(media, preferences);
        QVERIFY(device.findCamera());
        device.createInput();
        QCOMPARE(device.exposureTargetOffsetEV(), std::nullopt); // no frame yet
        QSignalSpy frames(&device, &CaptureDevice::frameArrived);
        device.startRunning();
        QVERIFY(frames.wait());
        const double measured = exposuretarget::offsetEV(exposuretarget::linearFromSrgb(118));
        QVERIFY(std::fabs(*device.exposureTargetOffsetEV() - measured) < 1e-5);
        preferences.setDouble(CaptureCalibration::offsetKey("file"), -0.7);
        QVERIFY(std::fabs(*device.exposureTargetOffsetEV() - (measured - 0.7)) < 1e-5);
    }

    void missingFootageIsNoCamera_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("nothing there") << "missing.avi";
        QTest::newRow("folder without images") << "empty";
    }

    void missingFootageIsNoCamera()
    {
        QFETCH(QString, name);
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir("empty"));
        MemoryPreferenceStore preferences;
        FileCaptureDevice device(dir.filePath(name), preferences);
        QVERIFY(!device.findCamera());
    }

    void undecodableImageCannotBeOpened()
    {
        QTemporaryDir dir;
        const QString media = dir.filePath("broken.png");
        writeFile(media, "not a picture");
        MemoryPreferenceStore preferences;
        FileCaptureDevice device(media, preferences);
        QVERIFY(device.findCamera());
        QVERIFY_THROWS_EXCEPTION(CaptureDeviceException, device.createInput());
    }

    void folderPlaysInNameOrderAndLoops()
    {
        QTemporaryDir dir;
        QVERIFY(filled(40).save(dir.filePath("b.png")));
        QVERIFY(filled(20).save(dir.filePath("a.png")));
        QVERIFY(filled(60).save(dir.filePath("c.png")));
        writeFile(dir.filePath("notes.txt"), "not a frame");
        MemoryPreferenceStore preferences;
        FileCaptureDevice device(dir.path(), preferences);
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
        MemoryPreferenceStore preferences;
        FileCaptureDevice device(clip, preferences);
        QVERIFY(device.findCamera());
        QCOMPARE(device.iso(), std::optional(100.0f));
        QCOMPARE(device.exposureDurationS(), std::optional(0.01f));
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
