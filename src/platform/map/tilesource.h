#pragma once

#include "tileid.h"

#include <QImage>
#include <QObject>

namespace kestrum {

/// Where map tiles come from: the pictures of a tile server, kept on disk.
///
/// Each tile asked for and not withdrawn ends in one `tileFinished`, on the thread the
/// source lives on, never before the requesting call returns. Several clients may ask for
/// the same tile: the source counts them, fetches it once, and withdraws the fetch only
/// when every client has withdrawn; the one `tileFinished` answers them all.
class TileSource : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Asks for `tile`.
    virtual void requestTile(TileId tile) = 0;
    /// Withdraws one earlier `requestTile(tile)`; nothing is signalled for it.
    virtual void cancelTile(TileId tile) = 0;

signals:
    /// The picture of `tile`; null when it cannot be had (no network and nothing kept,
    /// or no such tile). A failure is no error to show: the map shows its background.
    void tileFinished(kestrum::TileId tile, const QImage& image);
};

} // namespace kestrum
