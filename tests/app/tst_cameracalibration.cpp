#include "app/cameracalibrationfacade.h"
#include "camera/cameracontroller.h"
#include "camera/selfmeteringcamera.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "support/fakecapturedevice.h"
#include "support/memorypreferencestore.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>

using namespace kestrum;
using OptF = std::optional<float>;

namespace {

constexpr double kToleranceEV = 1e-4;

// The live camera on a fake webcam at ISO 100 and 1/100 s, seeing a grey frame, with the
// settings' Camera section over it.
struct Rig {
    explicit Rig(OptF reportedAperture)
    {
        auto fake = std::make_unique<FakeCaptureDevice>();
        device = fake.get();
        device->setReadouts({100.0f, 0.01f, reportedAperture, {}});
        auto metered = std::make_unique<SelfMeteringCamera>(std::move(fake), store);
        calibration.emplace(metered.get());
        controller = std::make_unique<CameraController>(
            std::move(metered), [] { return nullptr; }, metadata, nullptr);
        controller->lv().subscribe(&context, [this](double value) { last = value; });
    }

    double measure()
    {
        QImage grey(32, 24, QImage::Format_RGB32);
        grey.fill(qRgb(118, 118, 118));
        device->pushFrame({grey, std::nullopt});
        controller->measure();
        return last;
    }

    MemoryPreferenceStore store;
    Exiv2ImageMetadata metadata;
    FakeCaptureDevice* device = nullptr;
    std::optional<CameraCalibrationFacade> calibration;
    std::unique_ptr<CameraController> controller;
    QObject context;
    double last = std::nan("");
};

} // namespace

// The settings' Camera section: what it shows of the camera in use, and that what it sets
// moves the very next reading.
class CameraCalibrationTest : public QObject {
    Q_OBJECT

private slots:
    void nextReadingMovesByTheChange_data()
    {
        QTest::addColumn<OptF>("reportedAperture");
        QTest::addColumn<int>("calibrationIndex");
        QTest::addColumn<double>("lensAperture");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("changeEV");
        QTest::newRow("a third of a stop") << OptF() << 10 << 2.0 << "+\u2153 EV" << 0.3333;
        QTest::newRow("three stops down") << OptF() << 0 << 2.0 << "\u22123 EV" << -3.0;
        QTest::newRow("the lens at f/4") << OptF() << 9 << 4.0 << "0 EV" << 2.0;
        QTest::newRow("a reported f-number wins") << OptF(2.8f) << 12 << 4.0 << "+1 EV" << 1.0;
    }

    void nextReadingMovesByTheChange()
    {
        QFETCH(OptF, reportedAperture);
        QFETCH(int, calibrationIndex);
        QFETCH(double, lensAperture);
        QFETCH(double, changeEV);
        Rig rig(reportedAperture);
        CameraCalibrationFacade& calibration = *rig.calibration;
        QSignalSpy changed(&calibration, &CameraCalibrationFacade::changed);
        QVERIFY(!calibration.available());
        rig.controller->setUp();
        QCOMPARE(changed.count(), 1);
        QVERIFY(calibration.available());
        QCOMPARE(calibration.cameraId(), "fake");
        QCOMPARE(calibration.reportsAperture(), reportedAperture.has_value());
        QCOMPARE(calibration.calibrationText(), "0 EV");

        const double before = rig.measure();
        calibration.setCalibrationIndex(calibrationIndex);
        calibration.setLensAperture(lensAperture);
        QTEST(calibration.calibrationText(), "text");
        const double after = rig.measure();
        QVERIFY2(std::fabs(after - before - changeEV) < kToleranceEV,
                 qPrintable(QStringLiteral("%1 → %2").arg(before).arg(after)));
    }

    void mockCameraHasNone()
    {
        CameraCalibrationFacade calibration(nullptr);
        calibration.setCalibrationIndex(10);
        calibration.setLensAperture(4.0);
        QVERIFY(!calibration.available());
        QCOMPARE(calibration.cameraId(), QString());
        QCOMPARE(calibration.calibrationIndex(), 9);
        QCOMPARE(calibration.lensAperture(), 2.0);
    }
};

QTEST_MAIN(CameraCalibrationTest)
#include "tst_cameracalibration.moc"
