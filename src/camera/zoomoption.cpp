#include "zoomoption.h"

#include <charconv>

namespace kestrum {

namespace {

constexpr float kHalf = 0.5f;
constexpr QChar kTimes(0x00D7);

// Floors a non-negative number to one decimal as its float reads in decimal, so that
// 2.3f shows 2.3 even though its binary value lies a hair below.
QString flooredToOneDecimal(float number, bool withoutLeadingZero)
{
    char buffer[32];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed).ptr;
    const QString text = QString::fromLatin1(buffer, end - buffer);
    const qsizetype dot = text.indexOf(QLatin1Char('.'));
    QString integer = dot < 0 ? text : text.left(dot);
    const QChar tenth = dot < 0 || dot + 1 >= text.size() ? QLatin1Char('0') : text.at(dot + 1);
    if (withoutLeadingZero && integer == u"0")
        integer.clear();
    QString out = integer;
    if (tenth != QLatin1Char('0'))
        out += QLatin1Char('.') + tenth;
    return out.isEmpty() ? QStringLiteral("0") : out;
}

} // namespace

QString zoomTitle(float factor, bool halve, bool active)
{
    const float shown = halve ? factor * kHalf : factor;
    // The choice of format looks at the device factor, not the shown number.
    const bool fraction = factor < 1.0f && !active;
    QString title = flooredToOneDecimal(shown, fraction);
    if (active)
        title += kTimes;
    return title;
}

ZoomOption ZoomOption::make(float factor, bool halve)
{
    return {factor, zoomTitle(factor, halve, false), zoomTitle(factor, halve, true)};
}

} // namespace kestrum
