#pragma once

#include <QStringList>

namespace kestrum {
class LoggedExposure;
}

namespace kestrum::cli {

// Each command takes the words after its name, prints one line of JSON on stdout
// and returns the exit status; it throws UsageError or Failure otherwise.

/// scale COMPONENT STEP [--min A --max B]
int runScale(const QStringList& words);
/// calculate --lv LV --mode av|tv|m [--iso S] [--aperture N] [--speed T] [--compensation C]
/// [--profile ID]
int runCalculate(const QStringList& words);
/// settings get KEY | set KEY VALUE | dump, each with [--profile ID]
int runSettings(const QStringList& words);
/// profiles [add | rename ID NAME | delete INDEX | move FROM TO | use ID]
int runProfiles(const QStringList& words);

/// meter [--lv LV] [--mode M] [--seconds S] [--profile ID]
int runMeter(const QStringList& words);

/// log IMAGE --iso TEXT --aperture TEXT --speed TEXT --compensation VALUE
/// [--latitude LAT --longitude LON [--altitude ALT]]
int runLog(const QStringList& words);
/// album: the logged exposures of the album, newest first
int runAlbum(const QStringList& words);
/// read FILE: the logged exposure in one photo file
int runRead(const QStringList& words);

/// Writes one line to stdout in UTF-8.
void printLine(const QString& line);

/// {"localIdentifier","aperture","speed","iso","compensation","date","latitude","longitude"},
/// the date in ISO 8601 UTC, latitude and longitude null without a coordinate.
QString jsonLoggedExposure(const LoggedExposure& exposure);

} // namespace kestrum::cli
