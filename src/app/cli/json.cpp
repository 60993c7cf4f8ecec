#include "json.h"

#include "exposure/shortestdecimaltext.h"

#include <cmath>

namespace kestrum::cli {

namespace {
const QString kNull = QStringLiteral("null");
constexpr double kLargestIdentifiableThousandths = 9.2e18;
} // namespace

QString jsonString(const QString& text)
{
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'"':
            out += QLatin1String("\\\"");
            break;
        case u'\\':
            out += QLatin1String("\\\\");
            break;
        case u'\n':
            out += QLatin1String("\\n");
            break;
        case u'\t':
            out += QLatin1String("\\t");
            break;
        case u'\r':
            out += QLatin1String("\\r");
            break;
        default:
            if (c.unicode() < 0x20)
                out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    out += QLatin1Char('"');
    return out;
}

QString jsonNumber(double value)
{
    if (!std::isfinite(value))
        return kNull;
    return shortestDecimalText(value);
}

QString jsonObject(const QList<std::pair<QString, QString>>& members)
{
    QStringList encoded;
    encoded.reserve(members.size());
    for (const auto& [name, value] : members)
        encoded.append(jsonString(name) + QLatin1Char(':') + value);
    return QLatin1Char('{') + encoded.join(QLatin1Char(',')) + QLatin1Char('}');
}

QString jsonArray(const QStringList& elements)
{
    return QLatin1Char('[') + elements.join(QLatin1Char(',')) + QLatin1Char(']');
}

template <typename C> QString jsonComponent(const C& component)
{
    // The identity stops the program for values without thousandths; print null instead.
    const double scaled = component.value * 1000.0;
    const bool identifiable =
        std::isfinite(scaled) && std::fabs(scaled) < kLargestIdentifiableThousandths;
    return jsonObject({
        {QStringLiteral("type"), jsonString(rawValue(component.type))},
        {QStringLiteral("value"), jsonNumber(component.value)},
        {QStringLiteral("display"), jsonString(component.display)},
        {QStringLiteral("id"), identifiable ? jsonString(component.id()) : kNull},
    });
}

template QString jsonComponent(const Aperture&);
template QString jsonComponent(const ShutterSpeed&);
template QString jsonComponent(const ISO&);
template QString jsonComponent(const Compensation&);

QString jsonError(const std::optional<ExposureError>& error)
{
    return error ? jsonString(rawValue(*error)) : kNull;
}

} // namespace kestrum::cli
