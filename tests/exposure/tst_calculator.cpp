#include "exposure/calculator.h"
#include "settings/profilesettings.h"
#include "support/memorypreferencestore.h"

#include <QTest>

#include <limits>

using namespace kestrum;

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Profile {
    MemoryPreferenceStore store;
    ProfileSettings settings{QStringLiteral("default"), store};
    Calculator calculator{[this] { return &settings; }};
};

template <typename C> QString describe(const ExposureResult<C>& r)
{
    return r.hasEntry() ? r.entry().display : rawValue(r.error());
}

} // namespace

class CalculatorTest : public QObject {
    Q_OBJECT

private slots:
    void calculateAperture()
    {
        const auto aperture = [](const QString& step, double minimum, double maximum, double ev,
                                 double time) {
            Profile profile;
            profile.store.setString("default.fractionForAperture", step);
            profile.store.setDouble("default.minimumAperture", minimum);
            profile.store.setDouble("default.maximumAperture", maximum);
            return describe(profile.calculator.calculateAperture(ev, time));
        };
        QCOMPARE(aperture("full", 1.0, 22.63, 10.0, 0.0078125), "2.8");
        QCOMPARE(aperture("full", 1.41, 16.0, 15.0, 0.0078125), "16"); // the last entry is inside
        QCOMPARE(aperture("full", 0.7071, 45.25, 20.0, 0.0001220703125), "11");
        QCOMPARE(aperture("full", 0.7071, 45.25, 20.0, 1.0), "overexposed");
        QCOMPARE(aperture("full", 1.41, 22.63, 0.0, 0.0078125), "underexposed");
        QCOMPARE(aperture("full", 2.0, 22.63, 2.0, 1.0), "2"); // the first entry is inside
        QCOMPARE(aperture("third", 1.0, 22.63, 10.3, 0.0078125), "3.2"); // the entry's own type
        QCOMPARE(aperture("full", 1.41, 22.63, 10.0, kNaN), "overexposed");
    }

    void calculateSpeed()
    {
        const auto speed = [](double slowest, double fastest, double ev, double fNumber) {
            Profile profile;
            profile.store.setDouble("default.minimumSpeed", slowest);
            profile.store.setDouble("default.maximumSpeed", fastest);
            return describe(profile.calculator.calculateSpeed(ev, fNumber));
        };
        QCOMPARE(speed(32.0, 0.0001220703125, 0.0, 8.0), "underexposed"); // 64 s is beyond 30s
        QCOMPARE(speed(32.0, 0.0001220703125, 12.0, 1.41), "2000"); // the nearer of 2000 and 4000
        QCOMPARE(speed(4.0, 0.0009765625, 12.0, 1.41), "overexposed"); // faster than allowed
        QCOMPARE(speed(4.0, 0.0009765625, 4.0, 8.0), "4s");            // the slowest is inside
        QCOMPARE(speed(4.0, 0.0009765625, 10.0, kNaN), "overexposed");
    }

    void possibleScalesFollowTheCurrentProfile()
    {
        MemoryPreferenceStore store;
        ProfileSettings first(QStringLiteral("a"), store);
        ProfileSettings second(QStringLiteral("b"), store);
        store.setString("b.fractionForAperture", "half");
        ProfileSettings* current = &first;
        const Calculator calculator([&current] { return current; });
        QCOMPARE(calculator.possibleApertures().size(), std::size_t(9)); // 1.4 … 22
        QCOMPARE(calculator.possibleSpeeds().front().display, "4s");
        QCOMPARE(calculator.possibleSpeeds().back().display, "1000");
        first.setFractionForSpeed(Fraction::third);
        QCOMPARE(calculator.possibleSpeeds().size(), std::size_t(37)); // in thirds
        current = &second;                                             // read at each call
        QCOMPARE(calculator.possibleApertures().size(), std::size_t(17));
    }

    void manualDeviation_data()
    {
        QTest::addColumn<double>("deviation");
        QTest::addColumn<QString>("expected");
        QTest::newRow("-2 is still shown") << -2.0 << "-2.0";
        QTest::newRow("+2 is already overexposed") << 2.0 << "overexposed";
        QTest::newRow("just below -2") << -2.0001 << "underexposed";
        QTest::newRow("half stop") << 0.5 << "0.5";
        QTest::newRow("quarter under uses hyphen-minus") << -0.25 << "-0.25";
        QTest::newRow("NaN passes as a value") << kNaN << "nan";
    }

    void manualDeviation()
    {
        QFETCH(double, deviation);
        QFETCH(QString, expected);
        const auto result = Calculator::manualDeviation(10.0 + deviation, 10.0);
        QCOMPARE(describe(result), expected);
        if (result.hasEntry())
            QCOMPARE(result.entry().type, Fraction::full);
    }

    void formulas()
    {
        QCOMPARE(Calculator::exposureValue(10.0, 400.0, 1.0), 11.0);
        QCOMPARE(Calculator::settingsLightValue(4.0, 1.0 / 64.0, 400.0, 1.0), 9.0);
        // Inverses: LV 12.5 at ISO 200 and −0.5 is EV 14, which f/128 at 1 s exposes.
        QCOMPARE(Calculator::exposureValue(12.5, 200.0, -0.5), 14.0);
        QCOMPARE(Calculator::settingsLightValue(128.0, 1.0, 200.0, -0.5), 12.5);
    }
};

QTEST_GUILESS_MAIN(CalculatorTest)
#include "tst_calculator.moc"
