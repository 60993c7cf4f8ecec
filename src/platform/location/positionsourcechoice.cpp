#include "positionsourcechoice.h"

#include <QLoggingCategory>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcPositionSource, "kestrum.platform.position")

constexpr auto kVariable = "KESTRUM_POSITION_SOURCE";
constexpr QStringView kNmeaPrefix = u"nmea:";
// GeoClue finds the app, its name and what the user allowed it by its desktop entry.
constexpr auto kDesktopId = KESTRUM_APP_ID;
} // namespace

PositionSourceChoice PositionSourceChoice::parse(const QString& value)
{
    if (value.isEmpty() || value == u"geoclue2")
        return {QStringLiteral("geoclue2"), {{QStringLiteral("desktopId"), kDesktopId}}, true};
    if (value.startsWith(kNmeaPrefix) && value.size() > kNmeaPrefix.size()) {
        const QString log = value.mid(kNmeaPrefix.size());
        return {QStringLiteral("nmea"), {{QStringLiteral("nmea.source"), log}}, false};
    }
    if (value != u"none")
        qCWarning(lcPositionSource)
            << kVariable << "is neither geoclue2, nmea:PATH nor none:" << value
            << "- taking no positions";
    return {};
}

PositionSourceChoice PositionSourceChoice::fromEnvironment()
{
    return parse(qEnvironmentVariable(kVariable));
}

} // namespace kestrum
