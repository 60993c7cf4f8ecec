#include "camera/cameracontroller.h"

#include "camera/selfmeteringcamera.h"
#include "platform/camera/capturedevice.h"
#include "platform/camera/capturedevicechoice.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "support/memorypreferencestore.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace kestrum;

namespace {

constexpr double kToleranceEV = 0.05;
constexpr int kDark = 30;
constexpr int kBright = 220;

// A camera playing one still image, exposed at ISO 200 and 1/125 s; its sidecar gives no
// aperture. A frame of middle grey (18 % linear) reads LV 9.966 at f/4.
class FootageRig {
public:
    explicit FootageRig(const QImage& frame)
    {
        const QString still = m_dir.filePath("scene.png");
        QVERIFY(frame.save(still));
        QFile sidecar(still + ".json");
        QVERIFY(sidecar.open(QIODevice::WriteOnly));
        sidecar.write(R"({"iso": 200, "exposureDuration": 0.008})");
        sidecar.close();
        const auto choice = CaptureDeviceChoice::parse("file:" + still);
        controller = std::make_unique<CameraController>(
            std::make_unique<SelfMeteringCamera>(choice.make(), preferences),
            [] { return nullptr; }, metadata, CameraController::FrameConsumer());
        controller->setUp();
        // Metering needs a frame.
        QSignalSpy frames(qobject_cast<CaptureDevice*>(controller->session()),
                          &CaptureDevice::frameArrived);
        QVERIFY(frames.wait());
        controller->lv().subscribe(&m_context, [this](double value) { m_last = value; });
    }

    double measure()
    {
        controller->measure();
        return m_last;
    }

    MemoryPreferenceStore preferences;
    Exiv2ImageMetadata metadata;
    std::unique_ptr<CameraController> controller;

private:
    QTemporaryDir m_dir;
    QObject m_context;
    double m_last = std::nan("");
};

QImage uniform(int grey)
{
    QImage image(320, 240, QImage::Format_RGB32);
    image.fill(qRgb(grey, grey, grey));
    return image;
}

QImage darkLeftBrightRight()
{
    QImage image = uniform(kDark);
    QPainter(&image).fillRect(160, 0, 160, 240, QColor(kBright, kBright, kBright));
    return image;
}

} // namespace

// The live controller metering recorded footage through the file camera.
class CameraControllerFileTest : public QObject {
    Q_OBJECT

private slots:
    void spotMeteringReadsThePatch_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<double>("changeEV");
        // Against the mean of both halves' linear light.
        QTest::newRow("bright half reads brighter") << QPointF(0.75, 0.5) << 0.974;
        QTest::newRow("dark half reads darker") << QPointF(0.25, 0.5) << -4.811;
    }

    void spotMeteringReadsThePatch()
    {
        QFETCH(QPointF, point);
        QFETCH(double, changeEV);
        FootageRig rig(darkLeftBrightRight());
        const double centreWeighted = rig.measure();
        rig.controller->expose(point, ExposureMode::autoExpose, true);
        const double spot = rig.measure();
        QVERIFY2(std::fabs(spot - centreWeighted - changeEV) < kToleranceEV,
                 qPrintable(QStringLiteral("%1 → %2").arg(centreWeighted).arg(spot)));
        // Continuous exposure meters the whole frame again.
        rig.controller->expose(point, ExposureMode::continuousAutoExposure, false);
        QVERIFY(std::fabs(rig.measure() - centreWeighted) < kToleranceEV);
    }

    // Footage without an aperture takes the file camera's stored f-number and calibration.
    void apertureAndCalibrationFromPreferences()
    {
        FootageRig rig(uniform(118));
        rig.preferences.setDouble("camera.file.aperture", 4.0);
        rig.preferences.setDouble("camera.file.calibration", 0.5); // reads half a stop dark
        const double measured = rig.measure(); // f/2 by default would read 8.475
        QVERIFY2(std::fabs(measured - 10.475) < kToleranceEV,
                 qPrintable(QString::number(measured)));
    }
};

QTEST_MAIN(CameraControllerFileTest)
#include "tst_cameracontrollerfile.moc"
