#include "lightvalue.h"

#include <cmath>

namespace kestrum {

double lightValue(double fNumber, double exposureTimeS, double iso, double offsetEV)
{
    return std::log2(fNumber * fNumber / exposureTimeS) - std::log2(iso / kLightValueReferenceISO) +
           offsetEV;
}

QString lightValueText(double lightValue)
{
    const double tenths = std::round(lightValue * 10.0) / 10.0;
    const QString magnitude = QString::number(std::abs(tenths), 'f', 1);
    return tenths < 0.0 ? QStringLiteral("LV \u2212") + magnitude
                        : QStringLiteral("LV ") + magnitude;
}

} // namespace kestrum
