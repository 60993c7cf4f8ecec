#pragma once

#include "platform/map/tileid.h"

#include <QCache>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>

namespace kestrum {

class TileSource;

/// The tiles one map view draws from. It asks the tile source for the tiles in view that
/// it neither keeps nor waits for, withdraws the requests for tiles that left the view,
/// and keeps the latest tiles in memory, so that panning back or zooming out shows them at
/// once. A tile that could not be had is asked for again only once it has left the view
/// and come back into it, so an offline map asks for no more than the user looks at.
class MapTiles : public QObject {
    Q_OBJECT

public:
    /// Tiles kept at least; a view of many tiles keeps two views' worth.
    static constexpr int kMinimumKeptTiles = 64;

    explicit MapTiles(QObject* parent = nullptr);
    /// Withdraws the requests still open.
    ~MapTiles() override;

    /// Where tiles come from; may be null (nothing is drawn but the background).
    void setSource(TileSource* source);
    /// The tiles in view, the most wanted first.
    void show(const QList<TileId>& inView);
    /// The kept picture of `tile`, or null.
    const QImage* image(TileId tile) const;

signals:
    /// A tile came that was not there to draw before.
    void arrived();

private:
    void finish(TileId tile, const QImage& image);
    void withdrawAll();

    QPointer<TileSource> m_source;
    QSet<TileId> m_asked;
    QSet<TileId> m_unavailable;
    QCache<TileId, QImage> m_kept{kMinimumKeptTiles};
};

} // namespace kestrum
