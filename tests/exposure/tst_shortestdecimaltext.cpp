#include "exposure/shortestdecimaltext.h"

#include <QTest>

#include <cmath>
#include <limits>

using kestrum::shortestDecimalText;

class ShortestDecimalTextTest : public QObject {
    Q_OBJECT

private slots:
    void formats_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");

        QTest::newRow("negative quarter uses hyphen-minus") << -0.25 << "-0.25";
        QTest::newRow("whole keeps a fraction") << 2.0 << "2.0";
        QTest::newRow("negative zero") << -0.0 << "-0.0";
        QTest::newRow("shortest, not 17 digits") << 0.1 << "0.1";
        QTest::newRow("reciprocal round-trips") << 1.0 / 1.26 << "0.7936507936507936";
        QTest::newRow("1e-4 stays plain") << 0.0001 << "0.0001";
        QTest::newRow("below 1e-4 is exponent") << 0.00001 << "1e-05";
        QTest::newRow("exponent with fraction") << 0.000015 << "1.5e-05";
        QTest::newRow("fastest speed stays plain") << 0.0001220703125 << "0.0001220703125";
        QTest::newRow("large plain") << 1e15 << "1000000000000000.0";
        QTest::newRow("from 1e16 exponent") << 1e16 << "1e+16";
        QTest::newRow("negative exponent form") << -2.5e20 << "-2.5e+20";
        QTest::newRow("three-digit exponent") << 1e-300 << "1e-300";
        QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN() << "nan";
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << "inf";
        QTest::newRow("negative infinity") << -std::numeric_limits<double>::infinity() << "-inf";
    }

    void formats()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(shortestDecimalText(value), text);
    }

    void roundTrips_data()
    {
        QTest::addColumn<double>("value");
        QTest::newRow("third of a stop") << 1.0 / 3.0;
        QTest::newRow("tiny") << 5e-324;
        QTest::newRow("largest") << std::numeric_limits<double>::max();
    }

    void roundTrips()
    {
        QFETCH(double, value);
        QCOMPARE(shortestDecimalText(value).toDouble(), value);
    }
};

QTEST_GUILESS_MAIN(ShortestDecimalTextTest)
#include "tst_shortestdecimaltext.moc"
