#pragma once

#include "loggedexposure.h"

#include <QList>

#include <optional>

namespace kestrum {

/// The part of the world a map shows: its centre and how many degrees it spans.
struct MapRegion {
    /// The span the logged-photo maps open on, in degrees of latitude and of longitude.
    static constexpr double kPhotoSpanDegrees = 0.01;

    double centerLatitude = 0.0;
    double centerLongitude = 0.0;
    double latitudeSpan = 0.0;
    double longitudeSpan = 0.0;
};

/// Where the logged-photo browser's map opens: on the first of `exposures` (newest first)
/// that carries a position, 0.01° each way. It does not try to fit every pin. None when
/// no exposure has a position.
std::optional<MapRegion> browserMapRegion(const QList<LoggedExposure>& exposures);

} // namespace kestrum
