#include "commandline.h"
#include "commands.h"
#include "json.h"
#include "simulatedclock.h"

#include "camera/anycameracontroller.h"
#include "camera/mockcameracontroller.h"
#include "exposure/calculationcontroller.h"
#include "platform/store/inipreferencestore.h"
#include "settings/profilesettings.h"

#include <cmath>

namespace kestrum::cli {

namespace {
constexpr double kDefaultSeconds = 1.0;
constexpr double kMillisecondsPerSecond = 1000.0;
constexpr double kLongestRunS = 24.0 * 60.0 * 60.0;
} // namespace

int runMeter(const QStringList& words)
{
    const CommandLine line(words, {QStringLiteral("lv"), QStringLiteral("mode"),
                                   QStringLiteral("seconds"), QStringLiteral("profile")});
    line.expectWords(0);
    const double lightValue =
        line.number(QStringLiteral("lv")).value_or(MockCameraController::kLightValue);
    const double seconds = line.number(QStringLiteral("seconds")).value_or(kDefaultSeconds);
    if (!(seconds >= 0.0 && seconds <= kLongestRunS))
        throw UsageError("--seconds is a duration from 0 to one day");
    std::optional<Mode> mode;
    if (const auto text = line.option(QStringLiteral("mode"))) {
        mode = modeFromRawValue(*text);
        if (!mode)
            throw UsageError("--mode is av, tv or m, not " + text->toStdString());
    }
    const QString profileID = line.option(QStringLiteral("profile")).value_or(u"default"_qs);

    IniPreferenceStore store(IniPreferenceStore::defaultFilePath());
    ProfileSettings profile(profileID, store);
    if (mode)
        profile.setMode(*mode); // as if the profile had been left in that mode
    const Calculator calculator([&profile] { return &profile; });
    AnyCameraController camera(std::make_shared<MockCameraController>(
        AuthorizationStatus::authorized, std::nullopt, false, lightValue));
    SimulatedClock clock;
    const CalculationController controller(calculator, camera, &profile, clock);
    clock.runFor(std::llround(seconds * kMillisecondsPerSecond));

    printLine(jsonObject({
        {QStringLiteral("mode"), jsonString(rawValue(controller.mode()))},
        {QStringLiteral("iso"), jsonComponent(controller.iso())},
        {QStringLiteral("aperture"), jsonComponent(controller.aperture())},
        {QStringLiteral("speed"), jsonComponent(controller.speed())},
        {QStringLiteral("compensation"), jsonComponent(controller.compensation())},
        {QStringLiteral("manualExposure"), jsonComponent(controller.manualExposure())},
        {QStringLiteral("exposureError"), jsonError(controller.exposureError())},
    }));
    if (!store.sync())
        throw Failure("could not write the settings file " + store.filePath().toStdString());
    return 0;
}

} // namespace kestrum::cli
