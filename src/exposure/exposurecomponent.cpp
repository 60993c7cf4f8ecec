#include "exposurecomponent.h"

#include <QtGlobal>

#include <cmath>

namespace kestrum {

namespace {
constexpr double kThousandthsPerUnit = 1000.0;
constexpr double kTwoToThe63 = 9223372036854775808.0;
} // namespace

std::int64_t roundedThousandths(double value, QStringView typeName)
{
    const double rounded = std::round(value * kThousandthsPerUnit);
    if (!std::isfinite(rounded) || rounded >= kTwoToThe63 || rounded < -kTwoToThe63) {
        qFatal("%s value %g has no identity: not finite or out of range",
               qPrintable(typeName.toString()), value);
    }
    return static_cast<std::int64_t>(rounded);
}

} // namespace kestrum
