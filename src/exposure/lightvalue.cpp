#include "lightvalue.h"

#include <cmath>

namespace kestrum {

double lightValue(double fNumber, double exposureTimeS, double iso, double offsetEV)
{
    return std::log2(fNumber * fNumber / exposureTimeS) - std::log2(iso / kLightValueReferenceISO) +
           offsetEV;
}

} // namespace kestrum
