#include "isofromgain.h"

#include <algorithm>
#include <cmath>

namespace kestrum::isofromgain {

float isoFromGain(const SensorGain& gain)
{
    if (!gain.value || !gain.minimum || !gain.maximum || *gain.maximum <= *gain.minimum)
        return float(kIsoAtMinimumGain);
    const double span = double(*gain.maximum) - *gain.minimum;
    const double share = std::clamp((double(*gain.value) - *gain.minimum) / span, 0.0, 1.0);
    return float(kIsoAtMinimumGain * std::exp2(share * kGainRangeStops));
}

} // namespace kestrum::isofromgain
