#pragma once

#include "platform/location/coordinate.h"
#include "platform/map/tileid.h"

#include <QPointF>
#include <QRectF>

namespace kestrum {

/// The slippy-map tiling of the Web Mercator world, as OpenStreetMap's tile servers cut
/// it: at zoom level z the world is a square of 256 · 2^z pixels (z may be fractional),
/// x growing eastwards from 180° W and y southwards from 85.0511° N, the latitude at which
/// the projection makes the world square. At a whole zoom it is cut into 2^z × 2^z tiles.
namespace slippymap {

inline constexpr double kTileSizePx = 256.0;
/// Beyond this latitude, north or south, the projected world ends.
inline constexpr double kMaxLatitude = 85.0511287798066;
/// The deepest zoom that OpenStreetMap's standard tiles are drawn for.
inline constexpr int kMaxZoom = 19;

/// The side of the world in pixels at `zoomLevel`.
double worldSizePx(double zoomLevel);
/// Where `coordinate` lies in the world at `zoomLevel`, in pixels from its top-left
/// corner; latitudes beyond ±85.0511° lie on the world's edge.
QPointF worldPoint(Coordinate coordinate, double zoomLevel);
/// The coordinate at `point` of the world at `zoomLevel`: the longitude wrapped into
/// [−180°, 180°), points above or below the world on its edge.
Coordinate coordinateAt(QPointF point, double zoomLevel);
/// The tile of whole `zoom` that holds `coordinate`.
TileId tileAt(Coordinate coordinate, int zoom);
/// Tile column `x` wrapped around the world: columns repeat every 2^zoom.
int wrappedColumn(int x, int zoom);

/// A square of one tile's pixels.
struct TileArea {
    TileId tile;
    QRectF sourcePx;

    friend bool operator==(const TileArea&, const TileArea&) = default;
};
/// The tile `levels` zooms further out that covers `tile` (a wrapped one), and the part of
/// it that `tile` shows: what can stand in, enlarged, while `tile` is missing.
TileArea ancestorArea(TileId tile, int levels);

} // namespace slippymap

} // namespace kestrum
