#include "mapregion.h"

namespace kestrum {

std::optional<MapRegion> browserMapRegion(const QList<LoggedExposure>& exposures)
{
    for (const LoggedExposure& exposure : exposures) {
        if (const auto& coordinate = exposure.coordinate()) {
            return MapRegion{coordinate->latitude, coordinate->longitude,
                             MapRegion::kPhotoSpanDegrees, MapRegion::kPhotoSpanDegrees};
        }
    }
    return std::nullopt;
}

} // namespace kestrum
