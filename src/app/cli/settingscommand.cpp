#include "commandline.h"
#include "commands.h"
#include "json.h"

#include "platform/store/inipreferencestore.h"
#include "settings/profilesettings.h"

#include <functional>

namespace kestrum::cli {

namespace {

/// How the command line reads and writes one setting of a profile.
struct SettingAccess {
    const char* name;
    std::function<QString(const ProfileSettings&)> get;
    std::function<void(ProfileSettings&, const QString&)> set;
};

Fraction stepArgument(const QString& text)
{
    const auto fraction = fractionFromRawValue(text);
    if (!fraction)
        throw UsageError("a step is full, half or third, not " + text.toStdString());
    return *fraction;
}

Mode modeArgument(const QString& text)
{
    const auto mode = modeFromRawValue(text);
    if (!mode)
        throw UsageError("a mode is av, tv or m, not " + text.toStdString());
    return *mode;
}

template <typename C> C componentArgument(const QString& text)
{
    const auto value = parseNumber(text);
    if (!value)
        throw UsageError("a value is a number, not " + text.toStdString());
    return C{Fraction::full, *value, QString()};
}

template <typename C>
SettingAccess component(const char* name, C (ProfileSettings::*get)() const,
                        void (ProfileSettings::*set)(const C&))
{
    return {name, [get](const ProfileSettings& p) { return jsonComponent((p.*get)()); },
            [set](ProfileSettings& p, const QString& v) { (p.*set)(componentArgument<C>(v)); }};
}

SettingAccess step(const char* name, Fraction (ProfileSettings::*get)() const,
                   void (ProfileSettings::*set)(Fraction))
{
    return {name, [get](const ProfileSettings& p) { return jsonString(rawValue((p.*get)())); },
            [set](ProfileSettings& p, const QString& v) { (p.*set)(stepArgument(v)); }};
}

// In the order of a profile's settings.
const std::vector<SettingAccess>& settingAccess()
{
    using P = ProfileSettings;
    static const std::vector<SettingAccess> all = {
        step("fractionForAperture", &P::fractionForAperture, &P::setFractionForAperture),
        step("fractionForSpeed", &P::fractionForSpeed, &P::setFractionForSpeed),
        step("fractionForISO", &P::fractionForISO, &P::setFractionForISO),
        component<ShutterSpeed>("minimumSpeed", &P::minimumSpeed, &P::setMinimumSpeed),
        component<ShutterSpeed>("maximumSpeed", &P::maximumSpeed, &P::setMaximumSpeed),
        component<Aperture>("minimumAperture", &P::minimumAperture, &P::setMinimumAperture),
        component<Aperture>("maximumAperture", &P::maximumAperture, &P::setMaximumAperture),
        component<ISO>("minimumISO", &P::minimumISO, &P::setMinimumISO),
        component<ISO>("maximumISO", &P::maximumISO, &P::setMaximumISO),
        {"mode", [](const P& p) { return jsonString(rawValue(p.mode())); },
         [](P& p, const QString& v) { p.setMode(modeArgument(v)); }},
        component<ISO>("iso", &P::iso, &P::setISO),
        component<Aperture>("aperture", &P::aperture, &P::setAperture),
        component<ShutterSpeed>("speed", &P::speed, &P::setSpeed),
    };
    return all;
}

const SettingAccess& settingNamed(const QString& name)
{
    for (const SettingAccess& access : settingAccess()) {
        if (name == QLatin1String(access.name))
            return access;
    }
    throw UsageError("no setting named " + name.toStdString());
}

QString dump(const ProfileSettings& profile)
{
    QList<std::pair<QString, QString>> members;
    for (const SettingAccess& access : settingAccess())
        members.append({QString::fromLatin1(access.name), access.get(profile)});
    return jsonObject(members);
}

} // namespace

int runSettings(const QStringList& words)
{
    const CommandLine line(words, {QStringLiteral("profile")});
    const QString action = line.word(0, "get, set or dump");
    const QString profileID = line.option(QStringLiteral("profile")).value_or(u"default"_qs);

    IniPreferenceStore store(IniPreferenceStore::defaultFilePath());
    ProfileSettings profile(profileID, store);

    if (action == u"get") {
        line.expectWords(2);
        printLine(settingNamed(line.word(1, "KEY")).get(profile));
    } else if (action == u"set") {
        line.expectWords(3);
        settingNamed(line.word(1, "KEY")).set(profile, line.word(2, "VALUE"));
        if (!store.sync())
            throw Failure("could not write the settings file " + store.filePath().toStdString());
        printLine(dump(profile));
    } else if (action == u"dump") {
        line.expectWords(1);
        printLine(dump(profile));
    } else {
        throw UsageError("settings takes get, set or dump, not " + action.toStdString());
    }
    return 0;
}

} // namespace kestrum::cli
