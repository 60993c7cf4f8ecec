#include "commandline.h"
#include "commands.h"
#include "json.h"

#include "exposure/calculator.h"
#include "platform/store/inipreferencestore.h"
#include "settings/profilesettings.h"

namespace kestrum::cli {

namespace {

constexpr double kDefaultISO = 100.0;
constexpr double kDefaultCompensation = 0.0;

double required(const CommandLine& line, const char* name)
{
    const auto value = line.number(QString::fromLatin1(name));
    if (!value)
        throw UsageError(std::string("missing --") + name);
    return *value;
}

template <typename C> QString outcomeJson(double exposureValue, const ExposureResult<C>& result)
{
    return jsonObject({
        {QStringLiteral("ev"), jsonNumber(exposureValue)},
        {QStringLiteral("result"),
         result.hasEntry() ? jsonComponent(result.entry()) : QStringLiteral("null")},
        {QStringLiteral("error"),
         jsonError(result.hasEntry() ? std::nullopt : std::optional(result.error()))},
    });
}

} // namespace

int runCalculate(const QStringList& words)
{
    const CommandLine line(words,
                           {QStringLiteral("lv"), QStringLiteral("mode"), QStringLiteral("iso"),
                            QStringLiteral("aperture"), QStringLiteral("speed"),
                            QStringLiteral("compensation"), QStringLiteral("profile")});
    line.expectWords(0);
    const double lightValue = required(line, "lv");
    const auto modeText = line.option(QStringLiteral("mode"));
    if (!modeText)
        throw UsageError("missing --mode");
    const auto mode = modeFromRawValue(*modeText);
    if (!mode)
        throw UsageError("--mode is av, tv or m, not " + modeText->toStdString());
    const double iso = line.number(QStringLiteral("iso")).value_or(kDefaultISO);
    const double compensation =
        line.number(QStringLiteral("compensation")).value_or(kDefaultCompensation);
    const QString profileID = line.option(QStringLiteral("profile")).value_or(u"default"_qs);

    IniPreferenceStore store(IniPreferenceStore::defaultFilePath());
    ProfileSettings profile(profileID, store);
    const Calculator calculator([&profile] { return &profile; });
    const double exposureValue = Calculator::exposureValue(lightValue, iso, compensation);

    switch (*mode) {
    case Mode::av:
        printLine(outcomeJson(
            exposureValue, calculator.calculateSpeed(exposureValue, required(line, "aperture"))));
        break;
    case Mode::tv:
        printLine(outcomeJson(
            exposureValue, calculator.calculateAperture(exposureValue, required(line, "speed"))));
        break;
    case Mode::m: {
        const double settingsLightValue = Calculator::settingsLightValue(
            required(line, "aperture"), required(line, "speed"), iso, compensation);
        printLine(outcomeJson(exposureValue,
                              Calculator::manualDeviation(lightValue, settingsLightValue)));
        break;
    }
    }
    return 0;
}

} // namespace kestrum::cli
