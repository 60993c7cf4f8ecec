#pragma once

#include <QStringList>

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

/// Writes one line to stdout in UTF-8.
void printLine(const QString& line);

} // namespace kestrum::cli
