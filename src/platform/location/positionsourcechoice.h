#pragma once

#include <QString>
#include <QVariantMap>

namespace kestrum {

/// Which Qt Positioning plugin the app takes positions from, and with what parameters.
///
/// Chosen by the environment variable `KESTRUM_POSITION_SOURCE`:
/// - unset, empty or `geoclue2`: the GeoClue2 service, as the app's desktop id
///   (`org.kestrum.Kestrum`); it asks the user for permission on first use;
/// - `nmea:PATH`: replays the NMEA log at PATH (a file path or a `file:///` URL) at the
///   pace of its time stamps; a log needs no permission;
/// - `none`: no location service at all, as on a device with location switched off.
///
/// Any other value is reported and read as `none`, so a typo never silently falls back
/// to the real position of the machine.
struct PositionSourceChoice {
    QString pluginName; ///< empty: no source
    QVariantMap parameters;
    bool asksPermission = false; ///< whether the user must allow positions first

    static PositionSourceChoice parse(const QString& value);
    static PositionSourceChoice fromEnvironment();

    friend bool operator==(const PositionSourceChoice&, const PositionSourceChoice&) = default;
};

} // namespace kestrum
