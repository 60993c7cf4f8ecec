#include "camera/selfmeteringcamera.h"
#include "support/fakecapturedevice.h"
#include "support/memorypreferencestore.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

using namespace kestrum;
using OptF = std::optional<float>;
using Readouts = FakeCaptureDevice::Readouts;

Q_DECLARE_METATYPE(std::optional<float>)
Q_DECLARE_METATYPE(kestrum::FakeCaptureDevice::Readouts)

namespace {

QImage filled(int grey)
{
    QImage image(32, 24, QImage::Format_RGB32);
    image.fill(qRgb(grey, grey, grey));
    return image;
}

// A camera without metering of its own, made self-metering, with every frame it passes on.
// Its calibration is stored under "camera.fake.".
struct Metered {
    explicit Metered(const Readouts& readouts = {})
    {
        auto owned = std::make_unique<FakeCaptureDevice>();
        device = owned.get();
        device->setReadouts(readouts);
        camera.emplace(std::move(owned), preferences);
        frames.emplace(&*camera, &CaptureDevice::frameArrived);
        camera->findCamera();
    }
    CameraFrame push(const QImage& image)
    {
        device->pushFrame(CameraFrame{image, std::chrono::microseconds(0)});
        return frames->last().at(0).value<CameraFrame>();
    }
    float offset() const { return camera->exposureTargetOffsetEV().value_or(NAN); }

    MemoryPreferenceStore preferences;
    FakeCaptureDevice* device = nullptr;
    std::optional<SelfMeteringCamera> camera;
    std::optional<QSignalSpy> frames;
};

} // namespace

// A webcam or footage answering as a phone camera: metering, zoom, calibration, rotation.
class SelfMeteringCameraTest : public QObject {
    Q_OBJECT

private slots:
    void readoutsFallBack_data()
    {
        QTest::addColumn<Readouts>("reported");
        QTest::addColumn<OptF>("storedAperture");
        QTest::addColumn<OptF>("iso");
        QTest::addColumn<OptF>("aperture");
        QTest::newRow("footage with a full sidecar")
            << Readouts{200.0f, 0.004f, 2.8f, {}, {}} << OptF() << OptF(200) << OptF(2.8f);
        QTest::newRow("webcam: ISO from gain, f/2 by default")
            << Readouts{{}, 0.01f, {}, {}, SensorGain{50, 0, 100}} << OptF() << OptF(400)
            << OptF(2.0f);
        QTest::newRow("webcam with its f-number set")
            << Readouts{{}, 0.01f, {}, {}, SensorGain{}} << OptF(1.4f) << OptF(100) << OptF(1.4f);
        QTest::newRow("a reported ISO wins over gain")
            << Readouts{800.0f, 0.01f, {}, {}, SensorGain{0, 0, 100}} << OptF() << OptF(800)
            << OptF(2.0f);
        QTest::newRow("footage without ISO")
            << Readouts{{}, 0.01f, 4.0f, {}, {}} << OptF() << OptF() << OptF(4.0f);
    }

    void readoutsFallBack()
    {
        QFETCH(Readouts, reported);
        QFETCH(OptF, storedAperture);
        Metered metered(reported);
        if (!storedAperture)
            QVERIFY(metered.preferences.storedKeys().isEmpty()); // registered, not written
        else
            metered.preferences.setDouble("camera.fake.aperture", *storedAperture);
        QTEST(metered.camera->iso(), "iso");
        QTEST(metered.camera->lensAperture(), "aperture");
        QCOMPARE(metered.camera->exposureDurationS(), reported.exposureDurationS);
    }

    void offsetIsMeasuredAndCalibrated()
    {
        Metered metered;
        QCOMPARE(metered.camera->exposureTargetOffsetEV(), std::nullopt); // no frame yet
        metered.push(filled(118)); // linear 0.18116, a hair above middle grey
        QVERIFY(std::fabs(metered.offset() - 0.0093) < 1e-4);
        metered.preferences.setDouble("camera.fake.calibration", -0.7);
        QVERIFY(std::fabs(metered.offset() - -0.6907) < 1e-4);
    }

    void zoomCropsTheMiddleOfEachFrame()
    {
        QImage framed = filled(20); // a bright middle half in a dark border
        QPainter(&framed).fillRect(8, 6, 16, 12, QColor(200, 200, 200));
        Metered metered;
        QCOMPARE(metered.push(framed).image.size(), QSize(32, 24));
        QVERIFY(std::fabs(metered.offset() - 1.3865) < 1e-4); // centre-weighted

        metered.camera->setZoomFactor(2.0f);
        const CameraFrame zoomed = metered.push(framed);
        QCOMPARE(zoomed.image.size(), QSize(16, 12));
        QCOMPARE(zoomed.image.pixel(0, 0), qRgb(200, 200, 200));
        QVERIFY(std::fabs(metered.offset() - 1.6820) < 1e-4); // grey 200 alone

        // A ramp moves there over time and settles on the factor asked for.
        metered.camera->rampToZoomFactor(1.0f, 8.0f);
        QCOMPARE(metered.camera->zoomFactor(), 2.0f);
        QTRY_COMPARE(metered.camera->zoomFactor(), 1.0f);
        QCOMPARE(metered.push(framed).image.size(), QSize(32, 24));
    }

    void framesCarryTheSensorRotation_data()
    {
        using enum CameraFrame::Orientation;
        QTest::addColumn<OptF>("degrees");
        QTest::addColumn<CameraFrame::Orientation>("orientation");
        QTest::newRow("webcam default") << OptF() << up;
        QTest::newRow("quarter turn") << OptF(90) << right;
        QTest::newRow("half turn") << OptF(180) << down;
        QTest::newRow("counter-clockwise") << OptF(-90) << left;
        QTest::newRow("over a full turn") << OptF(450) << right;
        QTest::newRow("nearest quarter") << OptF(80) << right;
        QTest::newRow("not a number") << OptF(std::nanf("")) << up;
    }

    void framesCarryTheSensorRotation()
    {
        QFETCH(OptF, degrees);
        Metered metered;
        if (degrees)
            metered.preferences.setDouble("camera.fake.rotation", *degrees);
        QTEST(metered.push(filled(118)).orientation, "orientation");
    }

    // The mode reaches the webcam's own automatic exposure too (the spot it meters is
    // tst_exposuretarget's); a large change of scene while monitoring is announced.
    void exposureModeAndSubjectAreaMonitoring()
    {
        Metered metered;
        const QSignalSpy changes(&*metered.camera, &CaptureDevice::subjectAreaDidChange);
        metered.camera->setExposureMode(ExposureMode::autoExpose);
        QCOMPARE(metered.device->calls(), QStringList{"exposure mode autoExpose"});
        metered.push(filled(118));
        metered.camera->setSubjectAreaChangeMonitoringEnabled(true);
        metered.push(filled(128)); // a fraction of a stop
        QCOMPARE(changes.count(), 0);
        metered.push(filled(230)); // two stops brighter
        QCOMPARE(changes.count(), 1);
    }
};

QTEST_MAIN(SelfMeteringCameraTest)
#include "tst_selfmeteringcamera.moc"
