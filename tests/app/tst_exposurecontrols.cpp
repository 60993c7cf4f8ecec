#include "app/compensationstepper.h"
#include "app/manualexposurescale.h"
#include "app/stripdrag.h"
#include "exposure/exposurecomponent.h"

#include <QList>
#include <QTest>

using namespace kestrum;

using Index = std::optional<int>;

// The strip, the stepper and the manual scale over lists of ten, five and 13 entries.
class ExposureControlsTest : public QObject {
    Q_OBJECT

private slots:
    void release_data()
    {
        QTest::addColumn<double>("translation");
        QTest::addColumn<double>("predictedEnd");
        QTest::addColumn<Index>("current");
        QTest::addColumn<Index>("index");
        QTest::newRow("23: nothing") << 23.0 << 23.0 << Index(4) << Index(4);
        QTest::newRow("fling left floors: three on") << -20.0 << -130.0 << Index(4) << Index(7);
        QTest::newRow("fling right floors: two back") << 20.0 << 130.0 << Index(4) << Index(2);
        QTest::newRow("outrun by 100: no fling") << -20.0 << -120.0 << Index(4) << Index(4);
        QTest::newRow("held at the end") << -20.0 << -400.0 << Index(4) << Index(9);
        QTest::newRow("value not in the list") << 100.0 << 100.0 << Index() << Index();
    }

    void release()
    {
        QFETCH(double, translation);
        QFETCH(double, predictedEnd);
        QFETCH(Index, current);
        const int steps = StripDrag::releaseSteps(translation, predictedEnd);
        QTEST(StripDrag::releasedIndex(current, 10, steps), "index");
    }

    void predictedEnd() { QCOMPARE(StripDrag::predictedEndPoints(-20.0, -550.0), -130.0); }

    void stepper_data()
    {
        QTest::addColumn<Index>("current");
        QTest::addColumn<Index>("plus");
        QTest::addColumn<Index>("minus");
        QTest::addColumn<bool>("minusEnabled");
        QTest::newRow("middle") << Index(2) << Index(3) << Index(1) << true;
        QTest::newRow("first") << Index(0) << Index(1) << Index() << false;
        QTest::newRow("last") << Index(4) << Index() << Index(3) << true;
        QTest::newRow("not in the list: minus enabled, idle")
            << Index() << Index() << Index() << true;
    }

    void stepper()
    {
        QFETCH(Index, current);
        QFETCH(Index, plus);
        const CompensationStepper stepper{current, 5};
        QCOMPARE(stepper.incrementEnabled(), plus.has_value());
        QCOMPARE(stepper.incremented(), plus);
        QTEST(stepper.decremented(), "minus");
        QTEST(stepper.decrementEnabled(), "minusEnabled");
    }

    void differsFromDefault()
    {
        const Compensation zero{Fraction::half, 0.0, QStringLiteral("0")};
        const Compensation half{Fraction::half, 0.5, QStringLiteral("1/2")};
        QVERIFY(!kestrum::differsFromDefault(half, std::optional<Compensation>()));
        QVERIFY(!kestrum::differsFromDefault(zero, std::optional(zero)));
        QVERIFY(kestrum::differsFromDefault(half, std::optional(zero)));
    }

    void manualScale()
    {
        const ManualExposureScale scale(13); // 208 points, ±104 from the centre
        QCOMPARE(scale.markerOffset(0), -96.0);
        QCOMPARE(scale.markerOffset(7), 16.0);
        QCOMPARE(scale.markerState({}), ManualExposureScale::MarkerState::normal);
        QCOMPARE(scale.markerState(ExposureError::overexposed),
                 ManualExposureScale::MarkerState::error);
        QCOMPARE(scale.errorMarkOffset({}), std::optional<double>());
        QCOMPARE(scale.errorMarkOffset(ExposureError::overexposed), std::optional(114.0));
        QCOMPARE(scale.errorMarkOffset(ExposureError::underexposed), std::optional(-114.0));
    }
};

QTEST_GUILESS_MAIN(ExposureControlsTest)
#include "tst_exposurecontrols.moc"
