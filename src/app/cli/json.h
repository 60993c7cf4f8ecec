#pragma once

#include "exposure/exposurecomponent.h"
#include "exposure/exposureerror.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace kestrum::cli {

/// A JSON string literal, escaped; non-ASCII text stays as it is.
QString jsonString(const QString& text);

/// A JSON number in shortest round-trip form ("1.26", "100.0", "1e-05"); null for
/// NaN and infinities, which JSON cannot carry.
QString jsonNumber(double value);

/// {"a":1,"b":2} from already encoded pairs, in the given order.
QString jsonObject(const QList<std::pair<QString, QString>>& members);

/// [a,b] from already encoded elements.
QString jsonArray(const QStringList& elements);

/// {"type":"third","value":1.26,"display":"1.2","id":"Aperturethird1.21260"}; the id is
/// null when the value has none (not finite).
template <typename C> QString jsonComponent(const C& component);

/// "underexposed", "overexposed" or null.
QString jsonError(const std::optional<ExposureError>& error);

} // namespace kestrum::cli
