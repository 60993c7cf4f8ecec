#include "camera/exposuretarget.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace kestrum;
namespace target = exposuretarget;

Q_DECLARE_METATYPE(MeteringRegion)

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 120;

QImage uniform(int grey)
{
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    image.fill(qRgb(grey, grey, grey));
    return image;
}

// Left half `left`, right half `right`.
QImage halves(int left, int right)
{
    QImage image = uniform(left);
    QPainter(&image).fillRect(kWidth / 2, 0, kWidth / 2, kHeight, QColor(right, right, right));
    return image;
}

// `inner` over the middle half of each axis, `outer` around it.
QImage centred(int inner, int outer)
{
    QImage image = uniform(outer);
    QPainter(&image).fillRect(kWidth / 4, kHeight / 4, kWidth / 2, kHeight / 2,
                              QColor(inner, inner, inner));
    return image;
}

MeteringRegion spot(double x, double y)
{
    return {MeteringRegion::Shape::spot, {x, y}};
}

} // namespace

// The exposure target offset that cameras without one measure from their frames.
class ExposureTargetTest : public QObject {
    Q_OBJECT

private slots:
    void srgbDecoding_data()
    {
        QTest::addColumn<int>("encoded");
        QTest::addColumn<double>("linear");
        QTest::newRow("black") << 0 << 0.0;
        QTest::newRow("linear toe") << 10 << 0.0030352698;
        QTest::newRow("near middle grey") << 118 << 0.1811642442;
        QTest::newRow("white") << 255 << 1.0;
    }

    void srgbDecoding()
    {
        QFETCH(int, encoded);
        QFETCH(double, linear);
        QVERIFY(std::fabs(target::linearFromSrgb(encoded) - linear) < 1e-10);
    }

    void luminanceWeighsGreenMost()
    {
        QVERIFY(target::linearLuminance(qRgb(0, 255, 0)) >
                target::linearLuminance(qRgb(255, 0, 0)));
        QVERIFY(target::linearLuminance(qRgb(255, 0, 0)) >
                target::linearLuminance(qRgb(0, 0, 255)));
        QCOMPARE(target::linearLuminance(qRgb(255, 255, 255)), 1.0);
    }

    // Linear luminances of the greys: 20 is 0.0069954102, 200 is 0.5775804404, 230 is
    // 0.7912979403.
    void meteredLuminance_data()
    {
        QTest::addColumn<QImage>("frame");
        QTest::addColumn<MeteringRegion>("region");
        QTest::addColumn<double>("luminance");
        const MeteringRegion centreWeighted;
        QTest::newRow("uniform, centre-weighted") << uniform(200) << centreWeighted << 0.5775804404;
        QTest::newRow("halves, centre-weighted")
            << halves(20, 230) << centreWeighted << 0.3991466753;
        QTest::newRow("halves, spot on the bright side")
            << halves(20, 230) << spot(0.75, 0.5) << 0.7912979403;
        QTest::newRow("halves, spot on the dark side")
            << halves(20, 230) << spot(0.25, 0.5) << 0.0069954102;
        QTest::newRow("spot at the edge moves inward")
            << halves(20, 230) << spot(1.0, 0.0) << 0.7912979403;
        // Three quarters of the centre, a quarter of the whole frame (a quarter bright).
        QTest::newRow("centre counts three quarters")
            << centred(230, 20) << centreWeighted << 0.6442412159;
    }

    void meteredLuminance()
    {
        QFETCH(QImage, frame);
        QFETCH(MeteringRegion, region);
        QFETCH(double, luminance);
        QVERIFY(std::fabs(target::meteredLuminance(frame, region) - luminance) < 1e-9);
    }

    void offset_data()
    {
        QTest::addColumn<double>("luminance");
        QTest::addColumn<double>("offsetEV");
        QTest::newRow("middle grey is on target") << 0.18 << 0.0;
        QTest::newRow("twice as bright") << 0.36 << 1.0;
        // Half of grey 1's 0.0003035270, against 18 %.
        QTest::newRow("black reads as half the darkest grey") << 0.0 << -10.2119564134;
    }

    void offset()
    {
        QFETCH(double, luminance);
        QFETCH(double, offsetEV);
        QVERIFY(std::fabs(target::offsetEV(luminance) - offsetEV) < 1e-9);
    }

    void subjectAreaChange_data()
    {
        QTest::addColumn<double>("before");
        QTest::addColumn<double>("after");
        QTest::addColumn<bool>("changed");
        QTest::newRow("one stop brighter") << 0.1 << 0.2 << true;
        QTest::newRow("one stop darker") << 0.2 << 0.1 << true;
        QTest::newRow("just under a stop") << 0.1 << 0.19 << false;
        QTest::newRow("from black") << 0.0 << 0.01 << true;
    }

    void subjectAreaChange()
    {
        QFETCH(double, before);
        QFETCH(double, after);
        QFETCH(bool, changed);
        QCOMPARE(target::isSubjectAreaChange(before, after), changed);
    }

    void onlyOneShotExposureMetersTheSpot_data()
    {
        QTest::addColumn<ExposureMode>("mode");
        QTest::addColumn<double>("offsetEV");
        // The bright half's 230 alone, or the mean of both halves.
        QTest::newRow("one-shot") << ExposureMode::autoExpose << 2.136224;
        QTest::newRow("continuous") << ExposureMode::continuousAutoExposure << 1.148922;
        QTest::newRow("locked") << ExposureMode::locked << 1.148922;
    }

    void onlyOneShotExposureMetersTheSpot()
    {
        QFETCH(ExposureMode, mode);
        QFETCH(double, offsetEV);
        ExposureTarget exposure;
        QCOMPARE(exposure.offsetEV(), std::nullopt);
        const QImage frame = halves(20, 230);
        exposure.takeFrame(frame, target::frameLuminance(frame));
        exposure.setPointOfInterest({0.75, 0.5});
        exposure.setMode(mode);
        QVERIFY(exposure.offsetEV().has_value());
        QVERIFY(std::fabs(*exposure.offsetEV() - offsetEV) < 1e-5);
    }

    void monitoringReportsEachLargeChangeOnce()
    {
        ExposureTarget exposure;
        const auto take = [&exposure](int grey) {
            const QImage frame = uniform(grey);
            return exposure.takeFrame(frame, target::frameLuminance(frame));
        };
        QVERIFY(!take(60));
        QVERIFY(!take(200)); // not monitoring yet
        exposure.setSubjectAreaMonitoring(true);
        QVERIFY(!take(190));
        QVERIFY(take(60));  // more than a stop darker than when monitoring began
        QVERIFY(!take(65)); // measured from the reported scene now
        QVERIFY(take(200));
        exposure.setSubjectAreaMonitoring(false);
        QVERIFY(!take(20));
    }
};

QTEST_GUILESS_MAIN(ExposureTargetTest)
#include "tst_exposuretarget.moc"
