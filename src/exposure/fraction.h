#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace kestrum {

/// The step of a value scale: full, half or third stops.
enum class Fraction { full, half, third };

/// The stored text of a step: "full", "half" or "third".
QString rawValue(Fraction fraction);

/// The step named by a stored text, or nothing for any other text.
std::optional<Fraction> fractionFromRawValue(QStringView text);

/// How a stored step reads: an unknown or missing text means full stops.
Fraction fractionOrFull(const std::optional<QString>& stored);

} // namespace kestrum
