#include "slippymap.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrum::slippymap {

namespace {
constexpr double kFullTurnDegrees = 360.0;
constexpr double kHalfTurnDegrees = 180.0;

double radians(double degrees)
{
    return degrees * std::numbers::pi / kHalfTurnDegrees;
}

double degrees(double radians)
{
    return radians * kHalfTurnDegrees / std::numbers::pi;
}
} // namespace

double worldSizePx(double zoomLevel)
{
    return kTileSizePx * std::exp2(zoomLevel);
}

QPointF worldPoint(Coordinate coordinate, double zoomLevel)
{
    const double size = worldSizePx(zoomLevel);
    const double latitude = radians(std::clamp(coordinate.latitude, -kMaxLatitude, kMaxLatitude));
    return {(coordinate.longitude + kHalfTurnDegrees) / kFullTurnDegrees * size,
            (1.0 - std::asinh(std::tan(latitude)) / std::numbers::pi) / 2.0 * size};
}

Coordinate coordinateAt(QPointF point, double zoomLevel)
{
    const double size = worldSizePx(zoomLevel);
    const double longitude = point.x() / size * kFullTurnDegrees;
    const double y = std::clamp(point.y(), 0.0, size);
    return {degrees(std::atan(std::sinh(std::numbers::pi * (1.0 - 2.0 * y / size)))),
            longitude - kFullTurnDegrees * std::floor(longitude / kFullTurnDegrees) -
                kHalfTurnDegrees};
}

TileId tileAt(Coordinate coordinate, int zoom)
{
    const QPointF point = worldPoint(coordinate, zoom);
    const int lastRow = (1 << zoom) - 1;
    return {zoom, wrappedColumn(int(std::floor(point.x() / kTileSizePx)), zoom),
            std::clamp(int(std::floor(point.y() / kTileSizePx)), 0, lastRow)};
}

int wrappedColumn(int x, int zoom)
{
    const int columns = 1 << zoom;
    return (x % columns + columns) % columns;
}

TileArea ancestorArea(TileId tile, int levels)
{
    const int up = std::clamp(levels, 0, tile.zoom);
    const int mask = (1 << up) - 1;
    const double side = kTileSizePx / (1 << up);
    return {{tile.zoom - up, tile.x >> up, tile.y >> up},
            {(tile.x & mask) * side, (tile.y & mask) * side, side, side}};
}

} // namespace kestrum::slippymap
