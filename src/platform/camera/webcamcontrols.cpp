#include "webcamcontrols.h"

#include <linux/videodev2.h>

namespace kestrum::webcamcontrols {

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

} // namespace kestrum::webcamcontrols
