#include "webcamexposure.h"

#include <linux/videodev2.h>

#include <algorithm>
#include <cmath>

namespace kestrum::webcamexposure {

float isoFromGain(std::optional<qint32> gain, std::optional<V4l2Controls::Range> range)
{
    if (!gain || !range || range->maximum <= range->minimum)
        return float(kIsoAtMinimumGain);
    const double span = double(range->maximum) - range->minimum;
    const double share = std::clamp((double(*gain) - range->minimum) / span, 0.0, 1.0);
    return float(kIsoAtMinimumGain * std::exp2(share * kGainRangeStops));
}

std::optional<float> durationFromExposureUnits(std::optional<qint32> units)
{
    if (!units || *units <= 0)
        return std::nullopt;
    return float(*units * kExposureUnitS);
}

std::optional<qint32> autoExposureEntry(ExposureMode mode, const QList<qint32>& offers)
{
    const bool automatic =
        mode == ExposureMode::autoExpose || mode == ExposureMode::continuousAutoExposure;
    const QList<qint32> preferred =
        automatic ? QList<qint32>{V4L2_EXPOSURE_APERTURE_PRIORITY, V4L2_EXPOSURE_AUTO}
                  : QList<qint32>{V4L2_EXPOSURE_MANUAL};
    if (offers.isEmpty())
        return preferred.first();
    for (const qint32 entry : preferred) {
        if (offers.contains(entry))
            return entry;
    }
    return std::nullopt;
}

} // namespace kestrum::webcamexposure
