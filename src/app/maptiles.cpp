#include "maptiles.h"

#include "platform/map/tilesource.h"

#include <algorithm>

namespace kestrum {

MapTiles::MapTiles(QObject* parent)
    : QObject(parent)
{}

MapTiles::~MapTiles()
{
    withdrawAll();
}

void MapTiles::setSource(TileSource* source)
{
    if (source == m_source)
        return;
    withdrawAll();
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    m_unavailable.clear();
    m_kept.clear();
    if (m_source)
        connect(m_source, &TileSource::tileFinished, this, &MapTiles::finish);
}

void MapTiles::show(const QList<TileId>& inView)
{
    const QSet<TileId> wanted(inView.cbegin(), inView.cend());
    m_kept.setMaxCost(std::max(kMinimumKeptTiles, 2 * int(wanted.size())));
    for (auto tile = m_asked.begin(); tile != m_asked.end();) {
        if (wanted.contains(*tile)) {
            ++tile;
            continue;
        }
        if (m_source)
            m_source->cancelTile(*tile);
        tile = m_asked.erase(tile);
    }
    m_unavailable.intersect(wanted);
    if (!m_source)
        return;
    for (const TileId& tile : inView) {
        // Looking a kept tile up keeps it longest.
        if (m_kept.object(tile) || m_asked.contains(tile) || m_unavailable.contains(tile))
            continue;
        m_asked.insert(tile);
        m_source->requestTile(tile);
    }
}

const QImage* MapTiles::image(TileId tile) const
{
    return m_kept.object(tile);
}

void MapTiles::finish(TileId tile, const QImage& image)
{
    if (!m_asked.remove(tile))
        return; // another view's
    if (image.isNull()) {
        m_unavailable.insert(tile);
        return;
    }
    m_kept.insert(tile, new QImage(image));
    emit arrived();
}

void MapTiles::withdrawAll()
{
    if (m_source) {
        for (const TileId& tile : std::as_const(m_asked))
            m_source->cancelTile(tile);
    }
    m_asked.clear();
}

} // namespace kestrum
