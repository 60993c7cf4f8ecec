#include "fraction.h"

namespace kestrum {

QString rawValue(Fraction fraction)
{
    switch (fraction) {
    case Fraction::half:
        return QStringLiteral("half");
    case Fraction::third:
        return QStringLiteral("third");
    case Fraction::full:
        break;
    }
    return QStringLiteral("full");
}

std::optional<Fraction> fractionFromRawValue(QStringView text)
{
    if (text == u"full")
        return Fraction::full;
    if (text == u"half")
        return Fraction::half;
    if (text == u"third")
        return Fraction::third;
    return std::nullopt;
}

Fraction fractionOrFull(const std::optional<QString>& stored)
{
    if (!stored)
        return Fraction::full;
    return fractionFromRawValue(*stored).value_or(Fraction::full);
}

} // namespace kestrum
