#pragma once

#include <QHashFunctions>
#include <QMetaType>

namespace kestrum {

/// One square map picture of the slippy-map scheme: at zoom `zoom` the world is
/// 2^zoom × 2^zoom tiles, x counted eastwards from 180° W and y southwards from the
/// northern edge of the Web Mercator world.
struct TileId {
    int zoom = 0;
    int x = 0;
    int y = 0;

    friend bool operator==(const TileId&, const TileId&) = default;
};

inline size_t qHash(const TileId& tile, size_t seed = 0) noexcept
{
    return qHashMulti(seed, tile.zoom, tile.x, tile.y);
}

} // namespace kestrum

Q_DECLARE_METATYPE(kestrum::TileId)
