#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace kestrum {

/// The metering mode.
enum class Mode {
    av, ///< aperture priority: the user picks the aperture, the speed is computed
    tv, ///< shutter priority: the user picks the speed, the aperture is computed
    m,  ///< manual: the user picks both, the meter reports the deviation in stops
};

/// The stored text of a mode: "av", "tv" or "m".
QString rawValue(Mode mode);

/// The mode named by a stored text, or nothing for any other text.
std::optional<Mode> modeFromRawValue(QStringView text);

/// How a stored mode reads: an unknown or missing text means aperture priority.
Mode modeOrAperturePriority(const std::optional<QString>& stored);

} // namespace kestrum
