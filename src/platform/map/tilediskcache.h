#pragma once

#include <QNetworkDiskCache>

namespace kestrum {

/// The disk cache of map tiles. It honours the expiry a tile server gives, as
/// QNetworkDiskCache does; a tile that comes without one counts as fresh for a week
/// (the minimum the OpenStreetMap tile policy asks clients to keep tiles), instead of
/// being fetched again every time. Stale tiles stay on disk until the size limit pushes
/// them out, so that they can be shown without a network.
class TileDiskCache final : public QNetworkDiskCache {
    Q_OBJECT

public:
    static constexpr qint64 kLifetimeWithoutExpiryS = 7 * 24 * 60 * 60;

    using QNetworkDiskCache::QNetworkDiskCache;

    QIODevice* prepare(const QNetworkCacheMetaData& metaData) override;
};

} // namespace kestrum
