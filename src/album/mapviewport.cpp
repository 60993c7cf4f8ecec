#include "mapviewport.h"

#include "slippymap.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrum::mapviewport {

namespace {
constexpr double kFullTurnDegrees = 360.0;
constexpr double kHalfTurnDegrees = 180.0;

QPointF middle(const MapViewport& view)
{
    return {view.size.width() / 2.0, view.size.height() / 2.0};
}

// The Mercator ordinate of `latitude` (degrees), in radians of the equator.
double mercatorY(double latitude)
{
    const double clamped = std::clamp(latitude, -slippymap::kMaxLatitude, slippymap::kMaxLatitude);
    return std::asinh(std::tan(clamped * std::numbers::pi / kHalfTurnDegrees));
}
} // namespace

MapViewport normalised(MapViewport view)
{
    view.zoomLevel = std::clamp(view.zoomLevel, kMinZoomLevel, double(slippymap::kMaxZoom));
    view.center.latitude =
        std::clamp(view.center.latitude, -slippymap::kMaxLatitude, slippymap::kMaxLatitude);
    const double eastOfDateLine = view.center.longitude + kHalfTurnDegrees;
    view.center.longitude = eastOfDateLine -
                            kFullTurnDegrees * std::floor(eastOfDateLine / kFullTurnDegrees) -
                            kHalfTurnDegrees;
    return view;
}

int tileZoom(double zoomLevel)
{
    return std::clamp(int(std::lround(zoomLevel)), int(kMinZoomLevel), slippymap::kMaxZoom);
}

TileRange visibleTiles(const MapViewport& view)
{
    const int zoom = tileZoom(view.zoomLevel);
    if (view.size.isEmpty())
        return {zoom};
    const double scale = std::exp2(view.zoomLevel - zoom);
    const QPointF center = slippymap::worldPoint(view.center, zoom);
    const double halfWidth = view.size.width() / 2.0 / scale;
    const double halfHeight = view.size.height() / 2.0 / scale;
    const auto first = [](double px) { return int(std::floor(px / slippymap::kTileSizePx)); };
    const auto last = [](double px) { return int(std::ceil(px / slippymap::kTileSizePx)) - 1; };
    return {zoom, first(center.x() - halfWidth), last(center.x() + halfWidth),
            std::max(first(center.y() - halfHeight), 0),
            std::min(last(center.y() + halfHeight), (1 << zoom) - 1)};
}

QRectF tileRect(const MapViewport& view, int zoom, int x, int y)
{
    const double scale = std::exp2(view.zoomLevel - zoom);
    const QPointF corner(x * slippymap::kTileSizePx, y * slippymap::kTileSizePx);
    const QPointF topLeft = (corner - slippymap::worldPoint(view.center, zoom)) * scale;
    const double side = slippymap::kTileSizePx * scale;
    return {topLeft + middle(view), QSizeF(side, side)};
}

QPointF itemPoint(const MapViewport& view, Coordinate coordinate)
{
    QPointF offset = slippymap::worldPoint(coordinate, view.zoomLevel) -
                     slippymap::worldPoint(view.center, view.zoomLevel);
    const double worldSize = slippymap::worldSizePx(view.zoomLevel);
    offset.rx() -= worldSize * std::round(offset.x() / worldSize);
    return middle(view) + offset;
}

Coordinate coordinateAt(const MapViewport& view, QPointF point)
{
    return slippymap::coordinateAt(
        slippymap::worldPoint(view.center, view.zoomLevel) + point - middle(view), view.zoomLevel);
}

MapViewport panned(const MapViewport& view, QPointF delta)
{
    MapViewport moved = view;
    moved.center = coordinateAt(view, middle(view) - delta);
    return normalised(moved);
}

MapViewport zoomedAbout(const MapViewport& view, double zoomLevel, QPointF anchor)
{
    const Coordinate anchored = coordinateAt(view, anchor);
    MapViewport zoomed = view;
    zoomed.zoomLevel = zoomLevel;
    zoomed = normalised(zoomed);
    zoomed.center = slippymap::coordinateAt(slippymap::worldPoint(anchored, zoomed.zoomLevel) -
                                                (anchor - middle(view)),
                                            zoomed.zoomLevel);
    return normalised(zoomed);
}

MapViewport pinched(const MapViewport& view, QPointF from, QPointF to, double scale)
{
    const MapViewport moved = panned(view, to - from);
    return zoomedAbout(moved, moved.zoomLevel + std::log2(scale), to);
}

double zoomLevelForSpan(double spanDegrees, double latitude, QSizeF size)
{
    if (!(spanDegrees > 0.0) || size.isEmpty())
        return kMinZoomLevel;
    // Pixels of the world at zoom 0 that the span covers across and down.
    const double acrossPx = spanDegrees / kFullTurnDegrees * slippymap::kTileSizePx;
    const double downPx =
        (mercatorY(latitude + spanDegrees / 2.0) - mercatorY(latitude - spanDegrees / 2.0)) /
        (2.0 * std::numbers::pi) * slippymap::kTileSizePx;
    const double zoom =
        std::min(std::log2(size.width() / acrossPx), std::log2(size.height() / downPx));
    return std::clamp(zoom, kMinZoomLevel, double(slippymap::kMaxZoom));
}

} // namespace kestrum::mapviewport
