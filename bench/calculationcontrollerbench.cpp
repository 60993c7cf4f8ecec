// Feeds 100 000 light values through a calculation controller at several input
// rates on a simulated clock and reports, as medians over repeated runs, how many
// outcomes were applied per simulated second and per value, the most applied in any
// one simulated second (the throttle must keep this at 4 or fewer), and the wall
// time spent per value.
//
// Run: build/bench/bench_calculationcontroller

#include "camera/anycameracontroller.h"
#include "exposure/calculationcontroller.h"
#include "settings/profilesettings.h"
#include "support/manualclock.h"
#include "support/memorypreferencestore.h"
#include "support/scriptedcameracontroller.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

using namespace kestrum;

namespace {

constexpr int kValues = 100000;
constexpr int kRepetitions = 5;
constexpr qint64 kMsPerSecond = 1000;

struct RunResult {
    double outcomesPerSecond = 0;
    double outcomesPerValue = 0;
    qint64 mostInOneSecond = 0;
    double wallNsPerValue = 0;
};

RunResult run(qint64 msBetweenValues, int valuesPerStep)
{
    MemoryPreferenceStore store;
    ProfileSettings settings(QStringLiteral("default"), store);
    const Calculator calculator([&settings] { return &settings; });
    auto camera = std::make_shared<ScriptedCameraController>(10.0);
    AnyCameraController box(camera);
    ManualClock clock;
    CalculationController controller(calculator, box, &settings, clock);

    std::vector<qint64> perSecond;
    qint64 secondStart = clock.nowMs();
    qint64 outcomesAtSecondStart = controller.appliedOutcomes();
    const qint64 outcomesAtStart = controller.appliedOutcomes();
    QElapsedTimer wall;
    wall.start();
    for (int i = 0; i < kValues;) {
        for (int k = 0; k < valuesPerStep && i < kValues; ++k, ++i)
            camera->send(4.0 + 12.0 * std::fabs(std::sin(i * 0.01))); // a restless scene
        clock.advance(msBetweenValues);
        if (clock.nowMs() - secondStart >= kMsPerSecond) {
            perSecond.push_back(controller.appliedOutcomes() - outcomesAtSecondStart);
            secondStart = clock.nowMs();
            outcomesAtSecondStart = controller.appliedOutcomes();
        }
    }
    const qint64 elapsedNs = wall.nsecsElapsed();
    const double seconds = double(clock.nowMs()) / kMsPerSecond;
    const qint64 outcomes = controller.appliedOutcomes() - outcomesAtStart;
    return {outcomes / seconds, double(outcomes) / kValues,
            perSecond.empty() ? outcomes : *std::max_element(perSecond.begin(), perSecond.end()),
            double(elapsedNs) / kValues};
}

template <typename F> double median(std::vector<RunResult>& runs, F field)
{
    std::vector<double> values;
    for (const RunResult& r : runs)
        values.push_back(field(r));
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    struct Rate {
        const char* name;
        qint64 msBetweenSteps;
        int valuesPerStep;
    };
    const Rate rates[] = {{"10 values per ms", 1, 10},
                          {"1 value per ms", 1, 1},
                          {"1 value per 10 ms", 10, 1},
                          {"1 value per 300 ms", 300, 1}};
    std::printf("%-20s %14s %14s %14s %14s\n", "input rate", "outcomes/s", "outcomes/value",
                "max in 1 s", "wall ns/value");
    bool withinBound = true;
    for (const Rate& rate : rates) {
        std::vector<RunResult> runs;
        for (int r = 0; r < kRepetitions; ++r)
            runs.push_back(run(rate.msBetweenSteps, rate.valuesPerStep));
        const double most =
            median(runs, [](const RunResult& x) { return double(x.mostInOneSecond); });
        withinBound = withinBound && most <= 4;
        std::printf("%-20s %14.2f %14.5f %14.0f %14.0f\n", rate.name,
                    median(runs, [](const RunResult& x) { return x.outcomesPerSecond; }),
                    median(runs, [](const RunResult& x) { return x.outcomesPerValue; }), most,
                    median(runs, [](const RunResult& x) { return x.wallNsPerValue; }));
    }
    std::printf("throttle bound (at most 4 outcomes per simulated second): %s\n",
                withinBound ? "held" : "BROKEN");
    return withinBound ? 0 : 1;
}
