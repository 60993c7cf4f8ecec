#pragma once

#include "platform/location/coordinate.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace kestrum {

/// What a map view shows: the coordinate at its middle, its zoom level and its size in
/// item points. Between whole zoom levels the view draws the nearest zoom's tiles scaled.
struct MapViewport {
    Coordinate center;
    double zoomLevel = 0.0;
    QSizeF size;

    friend bool operator==(const MapViewport&, const MapViewport&) = default;
};

/// The tiles of one zoom that cover a view, both ends included. Columns are not wrapped:
/// they run below 0 or past 2^zoom − 1 where the view shows 180° of longitude; rows stop
/// at the world's edges. Empty when the view is.
struct TileRange {
    int zoom = 0;
    int firstX = 0;
    int lastX = -1;
    int firstY = 0;
    int lastY = -1;

    friend bool operator==(const TileRange&, const TileRange&) = default;
};

/// A map view's arithmetic: which tiles it draws where, where a coordinate appears in it,
/// the zoom that shows a region, and how drags, pinches and wheels move it. Every view
/// these functions return is normalised (`normalised`).
namespace mapviewport {

inline constexpr double kMinZoomLevel = 0.0;

/// The centre's longitude wrapped into [−180°, 180°), its latitude within the projected
/// world (±85.0511°), the zoom level within kMinZoomLevel…slippymap::kMaxZoom.
MapViewport normalised(MapViewport view);
/// The zoom whose tiles a view at `zoomLevel` draws: the nearest one, so that a tile is
/// drawn between 0.71 and 1.41 times its size.
int tileZoom(double zoomLevel);
TileRange visibleTiles(const MapViewport& view);
/// Where the view draws the tile of `zoom` in (unwrapped) column `x` and row `y`.
QRectF tileRect(const MapViewport& view, int zoom, int x, int y);
/// Where `coordinate` appears, in item points from the view's top-left corner; of the
/// world's copies side by side, the one nearest the middle.
QPointF itemPoint(const MapViewport& view, Coordinate coordinate);
/// The coordinate under `point` of the view.
Coordinate coordinateAt(const MapViewport& view, QPointF point);

/// The view after its map was dragged by `delta` item points: the map follows the finger.
MapViewport panned(const MapViewport& view, QPointF delta);
/// The view at `zoomLevel` with the coordinate under `anchor` kept in place.
MapViewport zoomedAbout(const MapViewport& view, double zoomLevel, QPointF anchor);
/// The view after two fingers moved their midpoint from `from` to `to` and their distance
/// by the factor `scale`: panned with the midpoint, zoomed about it by log2(scale).
MapViewport pinched(const MapViewport& view, QPointF from, QPointF to, double scale);

/// The zoom level at which `spanDegrees` of latitude and of longitude around `latitude`
/// both fit into a view of `size`, within the zooms tiles are drawn for; kMinZoomLevel
/// for an empty view or a span that is not positive.
double zoomLevelForSpan(double spanDegrees, double latitude, QSizeF size);

} // namespace mapviewport

} // namespace kestrum
