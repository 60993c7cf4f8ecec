#include "platform/camera/capturedevicechoice.h"
#include "platform/camera/filecapturedevice.h"

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

} // namespace

// Recorded footage as a camera: the choice by environment, the sidecar, stills, video.
class FileCaptureTest : public QObject {
    Q_OBJECT

    std::optional<QTemporaryDir> m_dir;

    QString at(const QString& name) const { return m_dir->filePath(name); }

private slots:
    void init() { QVERIFY(m_dir.emplace().isValid()); }

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
        FileCaptureDevice device(at(name));
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
        FileCaptureDevice device(m_dir->path());
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
        FileCaptureDevice device(clip);
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
