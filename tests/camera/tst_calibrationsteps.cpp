#include "camera/calibrationsteps.h"

#include <QTest>

#include <cmath>

using namespace kestrum;

// The calibration stepper: thirds of a stop from −3 to +3 EV.
class CalibrationStepsTest : public QObject {
    Q_OBJECT

private slots:
    void rowsAreExactThirds_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<double>("offsetEV");
        QTest::addColumn<QString>("text");
        QTest::newRow("darkest") << 0 << -3.0 << "\u22123 EV";
        QTest::newRow("two thirds darker") << 7 << -0.6666666666666666 << "\u2212\u2154 EV";
        QTest::newRow("none") << 9 << 0.0 << "0 EV";
        QTest::newRow("a third brighter") << 10 << 0.3333333333333333 << "+\u2153 EV";
        QTest::newRow("one and two thirds") << 14 << 1.6666666666666667 << "+1\u2154 EV";
        QTest::newRow("brightest") << 18 << 3.0 << "+3 EV";
        QTest::newRow("past the end") << 25 << 3.0 << "+3 EV";
    }

    void rowsAreExactThirds()
    {
        QFETCH(int, row);
        QFETCH(double, offsetEV);
        QCOMPARE(CalibrationSteps::kCount, 19);
        QCOMPARE(CalibrationSteps::offsetEV(row), offsetEV);
        QTEST(CalibrationSteps::text(row), "text");
    }

    void storedOffsetsReadAsTheNearestRow_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<int>("row");
        QTest::newRow("a third written by hand") << 0.33 << 10;
        QTest::newRow("half a stop rounds away from none") << 0.5 << 11;
        QTest::newRow("minus half a stop") << -0.5 << 7;
        QTest::newRow("beyond +3") << 7.0 << 18;
        QTest::newRow("far beyond -3") << -1e300 << 0;
        QTest::newRow("not a number") << std::nan("") << 9;
    }

    void storedOffsetsReadAsTheNearestRow()
    {
        QFETCH(double, stored);
        QTEST(CalibrationSteps::rowOf(stored), "row");
    }
};

QTEST_GUILESS_MAIN(CalibrationStepsTest)
#include "tst_calibrationsteps.moc"
