#include "exposure/calculator.h"
#include "platform/memorypreferencestore.h"
#include "settings/profilesettings.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace kestrum;

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Limits written straight into the store, as a profile file would hold them.
struct Profile {
    MemoryPreferenceStore store;
    ProfileSettings settings{QStringLiteral("default"), store};
    Calculator calculator{[this] { return &settings; }};

    void limitApertures(double minimum, double maximum)
    {
        store.setDouble("default.minimumAperture", minimum);
        store.setDouble("default.maximumAperture", maximum);
    }
    void limitSpeeds(double slowest, double fastest)
    {
        store.setDouble("default.minimumSpeed", slowest);
        store.setDouble("default.maximumSpeed", fastest);
    }
};

QString describe(const ExposureResult<Aperture>& r)
{
    return r.hasEntry() ? r.entry().display : rawValue(r.error());
}
QString describe(const ExposureResult<ShutterSpeed>& r)
{
    return r.hasEntry() ? r.entry().display : rawValue(r.error());
}
QString describe(const ExposureResult<Compensation>& r)
{
    return r.hasEntry() ? r.entry().display : rawValue(r.error());
}

} // namespace

class CalculatorTest : public QObject {
    Q_OBJECT

private slots:
    void calculateAperture_data()
    {
        QTest::addColumn<QString>("step");
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("maximum");
        QTest::addColumn<double>("ev");
        QTest::addColumn<double>("time");
        QTest::addColumn<QString>("expected");
        QTest::newRow("EV 10 at 1/125 gives 2.8")
            << "full" << 1.0 << 22.63 << 10.0 << 0.0078125 << "2.8";
        QTest::newRow("exactly the last entry is inside")
            << "full" << 1.41 << 16.0 << 15.0 << 0.0078125 << "16";
        QTest::newRow("EV 20 at 1/8000 gives 11")
            << "full" << 0.7071 << 45.25 << 20.0 << 0.0001220703125 << "11";
        QTest::newRow("EV 20 at 1 s is too bright")
            << "full" << 0.7071 << 45.25 << 20.0 << 1.0 << "overexposed";
        QTest::newRow("too dark for the widest")
            << "full" << 1.41 << 22.63 << 0.0 << 0.0078125 << "underexposed";
        QTest::newRow("exactly the first entry is inside")
            << "full" << 2.0 << 22.63 << 2.0 << 1.0 << "2";
        QTest::newRow("third scale keeps the entry's own type")
            << "third" << 1.0 << 22.63 << 10.3 << 0.0078125 << "3.2";
        QTest::newRow("NaN time is overexposed")
            << "full" << 1.41 << 22.63 << 10.0 << kNaN << "overexposed";
    }

    void calculateAperture()
    {
        QFETCH(QString, step);
        QFETCH(double, minimum);
        QFETCH(double, maximum);
        QFETCH(double, ev);
        QFETCH(double, time);
        QFETCH(QString, expected);
        Profile profile;
        profile.store.setString("default.fractionForAperture", step);
        profile.limitApertures(minimum, maximum);
        QCOMPARE(describe(profile.calculator.calculateAperture(ev, time)), expected);
    }

    void calculateSpeed_data()
    {
        QTest::addColumn<double>("slowest");
        QTest::addColumn<double>("fastest");
        QTest::addColumn<double>("ev");
        QTest::addColumn<double>("fNumber");
        QTest::addColumn<QString>("expected");
        QTest::newRow("64 s is longer than 30s")
            << 32.0 << 0.0001220703125 << 0.0 << 8.0 << "underexposed";
        QTest::newRow("between 1/2000 and 1/4000 goes to the nearer")
            << 32.0 << 0.0001220703125 << 12.0 << 1.41 << "2000";
        QTest::newRow("faster than the profile allows")
            << 4.0 << 0.0009765625 << 12.0 << 1.41 << "overexposed";
        QTest::newRow("exactly the slowest is inside") << 4.0 << 0.0009765625 << 4.0 << 8.0 << "4s";
        QTest::newRow("NaN aperture is overexposed")
            << 4.0 << 0.0009765625 << 10.0 << kNaN << "overexposed";
    }

    void calculateSpeed()
    {
        QFETCH(double, slowest);
        QFETCH(double, fastest);
        QFETCH(double, ev);
        QFETCH(double, fNumber);
        QFETCH(QString, expected);
        Profile profile;
        profile.limitSpeeds(slowest, fastest);
        QCOMPARE(describe(profile.calculator.calculateSpeed(ev, fNumber)), expected);
    }

    void possibleScalesFollowTheProfile()
    {
        Profile profile;
        QCOMPARE(profile.calculator.possibleApertures().size(), std::size_t(9)); // 1.4 … 22
        QCOMPARE(profile.calculator.possibleSpeeds().front().display, "4s");
        QCOMPARE(profile.calculator.possibleSpeeds().back().display, "1000");
        profile.settings.setFractionForSpeed(Fraction::third);
        QCOMPARE(profile.calculator.possibleSpeeds().size(),
                 std::size_t(37)); // 4s … 1000 in thirds
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
        QCOMPARE(Calculator::exposureValue(10.0, 100.0, 0.0), 10.0);
        QCOMPARE(Calculator::settingsLightValue(4.0, 1.0 / 64.0, 100.0, 0.0), 10.0);
        QCOMPARE(Calculator::settingsLightValue(4.0, 1.0 / 64.0, 400.0, 1.0), 9.0);
        // The two formulas are inverses: settings computed for an EV read back its LV.
        const double ev = Calculator::exposureValue(12.5, 200.0, -0.5);
        QCOMPARE(Calculator::settingsLightValue(std::sqrt(std::exp2(ev)), 1.0, 200.0, -0.5), 12.5);
    }

    void readsTheCurrentProfileAtEachCall()
    {
        MemoryPreferenceStore store;
        ProfileSettings first(QStringLiteral("a"), store);
        ProfileSettings second(QStringLiteral("b"), store);
        store.setString("b.fractionForAperture", "half");
        ProfileSettings* current = &first;
        const Calculator calculator([&current] { return current; });
        QCOMPARE(calculator.possibleApertures().size(), std::size_t(9));
        current = &second;
        QCOMPARE(calculator.possibleApertures().size(), std::size_t(17));
    }
};

QTEST_GUILESS_MAIN(CalculatorTest)
#include "tst_calculator.moc"
