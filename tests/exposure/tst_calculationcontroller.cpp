#include "camera/anycameracontroller.h"
#include "exposure/calculationcontroller.h"
#include "settings/profilesettings.h"
#include "support/manualclock.h"
#include "support/memorypreferencestore.h"
#include "support/scriptedcameracontroller.h"

#include <QSignalSpy>
#include <QTest>

using namespace kestrum;

namespace {

constexpr int kThrottle = CalculationController::kThrottleIntervalMs;

// A meter on a scripted camera, a fresh profile and a clock that moves on demand. A
// second profile, "b", shares the store for switching to.
struct Meter {
    explicit Meter(double lightValue = 10.0, Mode mode = Mode::av)
        : camera(std::make_shared<ScriptedCameraController>(lightValue))
    {
        settings.setMode(mode);
        controller = std::make_unique<CalculationController>(calculator, box, &settings, clock);
    }

    void switchTo(ProfileSettings& profile)
    {
        current = &profile;
        controller->setSettings(&profile);
    }

    // The error, if any, and what the current mode computes: "overexposed 8000".
    QString outcome() const
    {
        const CalculationController& c = *controller;
        const QString& shown = c.mode() == Mode::av   ? c.speed().display
                               : c.mode() == Mode::tv ? c.aperture().display
                                                      : c.manualExposure().display;
        return (c.exposureError() ? rawValue(*c.exposureError()) : QString()) + u' ' + shown;
    }

    MemoryPreferenceStore store;
    ProfileSettings settings{QStringLiteral("default"), store};
    ProfileSettings other{QStringLiteral("b"), store};
    ProfileSettings* current = &settings;
    Calculator calculator{[this] { return current; }};
    std::shared_ptr<ScriptedCameraController> camera;
    AnyCameraController box{camera};
    ManualClock clock;
    std::unique_ptr<CalculationController> controller;
};

using Change = std::function<void(Meter&)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class CalculationControllerTest : public QObject {
    Q_OBJECT

private slots:
    void firstReadingIsComputedAtOnce()
    {
        const Meter meter(10.0);
        // EV 10 at f/2.8: 7.997/1024 s is nearest to 1/125.
        QCOMPARE(meter.controller->speed().display, "125");
        QCOMPARE(meter.controller->iso().display, "100");
        QCOMPARE(meter.controller->aperture().display, "2.8");
        QCOMPARE(meter.controller->exposureError(), std::nullopt);
    }

    void throttlePassesTheLatestValueAtMostEveryInterval()
    {
        Meter meter(10.0);
        const QSignalSpy speeds(meter.controller.get(), &CalculationController::speedChanged);
        for (const double lightValue : {11.0, 13.0, 12.0}) // only the last is applied, later
            meter.camera->send(lightValue);
        QCOMPARE(speeds.size(), 0);
        meter.clock.advance(kThrottle);
        QCOMPARE(speeds.size(), 1);
        QCOMPARE(meter.controller->speed().display, "500"); // EV 12 at f/2.8: ~1/512
        meter.clock.advance(kThrottle); // after a quiet interval the next goes through at once
        meter.camera->send(9.0);
        QCOMPARE(meter.controller->speed().display, "60");
    }

    void throttleBoundsRecomputationWhateverTheInputRate()
    {
        Meter meter(10.0);
        for (int ms = 0; ms < 3000; ++ms) { // a new tenth every 30 ms
            meter.camera->send(5.0 + ms / double(kThrottle));
            meter.clock.advance(1);
        }
        // The first reading at once, then the latest at the end of each of ten intervals.
        QCOMPARE(meter.controller->appliedOutcomes(), 11);
    }

    void onlyTheCurrentModesOutcomesApply()
    {
        Meter meter(10.0, Mode::tv);
        meter.camera->send(14.0);
        meter.clock.advance(kThrottle);
        QCOMPARE(meter.controller->speed().display, "125"); // tv never computes the speed
        QCOMPARE(meter.controller->aperture().display, "11");
        // av's latest outcome applies at once: LV 14 at the f/11 just computed is 1/128.
        meter.controller->setMode(Mode::av);
        QCOMPARE(meter.controller->speed().display, "125");
        QCOMPARE(meter.settings.mode(), Mode::av);
    }

    // f/4 at 1/60 and ISO 100 expose correctly at LV 10. Errors show the ends of the
    // full-stop tables, not the profile's limits (too bright: tst_kestrumcli, tst_meter.qml).
    void outcomeAtALightValue_data()
    {
        QTest::addColumn<Mode>("mode");
        QTest::addColumn<double>("lightValue");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("tv too dark") << Mode::tv << -2.0 << "underexposed 0.7";
        QTest::newRow("av too dark") << Mode::av << -2.0 << "underexposed 30s"; // 64 s
        QTest::newRow("m exactly 2 under is shown") << Mode::m << 8.0 << u" \u22122"_qs;
        QTest::newRow("m exactly 2 over is not") << Mode::m << 12.0 << "overexposed 10";
        QTest::newRow("m just beyond 2 under") << Mode::m << 7.99 << u"underexposed \u22123"_qs;
    }

    void outcomeAtALightValue()
    {
        QFETCH(Mode, mode);
        QFETCH(double, lightValue);
        QFETCH(QString, outcome);
        Meter meter(lightValue, mode);
        meter.controller->setAperture({Fraction::full, 4.0, "4"});
        meter.controller->setSpeed({Fraction::full, 0.015625, "60"});
        meter.clock.advance(kThrottle);
        QCOMPARE(meter.outcome(), outcome);
    }

    void holdStopsMeasuringWithinOnePeriod()
    {
        Meter meter;
        const int period = CalculationController::kMeasuringIntervalMs;
        meter.clock.advance(3 * period);
        QCOMPARE(meter.camera->measureCount(), 3);
        meter.controller->setHold(true);
        meter.clock.advance(10 * period);
        QCOMPARE(meter.camera->measureCount(), 3);
        meter.controller->setHold(false);
        meter.clock.advance(period);
        QCOMPARE(meter.camera->measureCount(), 4);
    }

    void isoStepChangeResnapsCompensation()
    {
        Meter meter;
        meter.settings.setFractionForISO(Fraction::half);
        meter.clock.advance(0); // lets the reload run
        meter.controller->setCompensation({Fraction::half, 0.5, "0.5"});
        meter.settings.setFractionForISO(Fraction::third);
        meter.clock.advance(0);
        QCOMPARE(meter.controller->compensation(),
                 (Compensation{Fraction::third, 0.66, u"\u2154"_qs}));
    }

    // A new profile, limit or step can change what one light value gives even when
    // ISO, compensation, aperture and speed read back the same: the mode's outcome is
    // worked out again, without waiting for another reading.
    void reloadRecomputesTheLastLightValue_data()
    {
        QTest::addColumn<Mode>("mode");
        QTest::addColumn<double>("lightValue");
        QTest::addColumn<QString>("before");
        QTest::addColumn<Change>("change");
        QTest::addColumn<QString>("after");
        const ShutterSpeed fastest{Fraction::full, 0.0001220703125, "8000"};
        // f/2.8 at LV 14 wants 1/2048 s, beyond 1/1000; the "8000" shown goes into the profile.
        QTest::newRow("profile with a faster shutter")
            << Mode::av << 14.0 << "overexposed 8000" << Change([fastest](Meter& meter) {
                   meter.other.setMaximumSpeed(fastest);
                   meter.other.setSpeed(fastest);
                   meter.switchTo(meter.other);
               })
            << " 2000";
        QTest::newRow("raised fastest speed")
            << Mode::av << 14.0 << "overexposed 8000"
            << Change([fastest](Meter& meter) { meter.settings.setMaximumSpeed(fastest); })
            << " 2000";
        // 1/125 s at LV 17 wants f/32, beyond f/22; the "45" shown goes into the profile.
        QTest::newRow("raised largest aperture")
            << Mode::tv << 17.0 << "overexposed 45" << Change([](Meter& meter) {
                   meter.settings.setMaximumAperture({Fraction::full, 45.25, "45"});
               })
            << " 32";
        // f/2.8 at LV 9.5 wants 1/90.5 s: nearer 1/128 than 1/64, nearer 1/101.6 than 1/80.6.
        QTest::newRow("speed in thirds") << Mode::av << 9.5 << " 125" << Change([](Meter& meter) {
            meter.settings.setFractionForSpeed(Fraction::third);
        }) << " 100";
        // f/2.8 at 1/125 and ISO 100 expose at LV 9.9996: 0.4 stops over is nearer 0 than 1,
        // nearer 0.33 than 0.66.
        QTest::newRow("ISO in thirds") << Mode::m << 10.4 << " 0" << Change([](Meter& meter) {
            meter.settings.setFractionForISO(Fraction::third);
        }) << u" \u2153"_qs;
    }

    void reloadRecomputesTheLastLightValue()
    {
        QFETCH(Mode, mode);
        QFETCH(double, lightValue);
        QFETCH(QString, before);
        QFETCH(Change, change);
        QFETCH(QString, after);
        Meter meter(lightValue, mode);
        meter.clock.advance(kThrottle);
        QCOMPARE(meter.outcome(), before);
        change(meter);
        meter.clock.advance(kThrottle);
        QCOMPARE(meter.outcome(), after);
    }

    void choicesAreWrittenBackToTheProfile()
    {
        Meter meter(10.0, Mode::tv);
        meter.controller->setSpeed({Fraction::full, 0.001953125, "500"});
        meter.controller->setISO({Fraction::full, 400.0, "400"});
        QCOMPARE(meter.settings.speed().value, 0.001953125);
        QCOMPARE(meter.settings.iso().value, 400.0);
        meter.settings.setMode(Mode::m); // the profile's own changes come back through a reload
        QCOMPARE(meter.controller->mode(), Mode::tv);
        meter.clock.advance(0);
        QCOMPARE(meter.controller->mode(), Mode::m);
    }

    void reloadSnapsStoredValuesIntoTheLimits()
    {
        Meter meter;
        meter.store.setDouble("default.iso", 12800.0);
        meter.store.setDouble("default.aperture", 1.0);
        meter.controller->reload();
        QCOMPARE(meter.controller->iso().display, "1600");
        QCOMPARE(meter.controller->aperture().display, "1.4");
    }
};

QTEST_GUILESS_MAIN(CalculationControllerTest)
#include "tst_calculationcontroller.moc"
