// The cost of one shutter-speed computation as the meter runs it: the profile's
// step and limits are read from the INI store on every call, the third-stop scale
// is cut to the limits and the result snapped to it.
//
// Run: build/bench/bench_calculator --benchmark_repetitions=9
// --benchmark_report_aggregates_only=true and read the median line.

#include "exposure/calculator.h"
#include "platform/store/inipreferencestore.h"
#include "settings/profilesettings.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace kestrum;

namespace {

void calculateSpeedOnThirdStopScaleWithLimits(benchmark::State& state)
{
    QTemporaryDir dir;
    IniPreferenceStore store(dir.filePath("bench.ini"));
    ProfileSettings profile(QStringLiteral("default"), store);
    profile.setFractionForSpeed(Fraction::third);
    profile.setMinimumSpeed({Fraction::full, 2.0, "2s"});
    profile.setMaximumSpeed({Fraction::full, 0.000244140625, "4000"});
    const Calculator calculator([&profile] { return &profile; });

    double ev = 8.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(calculator.calculateSpeed(ev, 2.828));
        ev = ev < 16.0 ? ev + 0.01 : 8.0; // sweep the scale so the snap lands everywhere
    }
}

void calculateApertureOnThirdStopScaleWithLimits(benchmark::State& state)
{
    QTemporaryDir dir;
    IniPreferenceStore store(dir.filePath("bench.ini"));
    ProfileSettings profile(QStringLiteral("default"), store);
    profile.setFractionForAperture(Fraction::third);
    const Calculator calculator([&profile] { return &profile; });

    double ev = 6.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(calculator.calculateAperture(ev, 0.0078125));
        ev = ev < 16.0 ? ev + 0.01 : 6.0;
    }
}

} // namespace

BENCHMARK(calculateSpeedOnThirdStopScaleWithLimits)->Unit(benchmark::kMicrosecond);
BENCHMARK(calculateApertureOnThirdStopScaleWithLimits)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
