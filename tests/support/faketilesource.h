#pragma once

#include "platform/map/tilesource.h"

#include <QList>

namespace kestrum {

/// A tile source that records what it is asked for and withdrawn from, and answers only
/// when the test says so.
class FakeTileSource final : public TileSource {
    Q_OBJECT

public:
    void requestTile(TileId tile) override { requested.append(tile); }
    void cancelTile(TileId tile) override { cancelled.append(tile); }

    /// Answers a request for `tile` with `image`, as the network would.
    void answer(TileId tile, const QImage& image) { emit tileFinished(tile, image); }

    QList<TileId> requested;
    QList<TileId> cancelled;
};

} // namespace kestrum
