#include "tilediskcache.h"

#include <QDateTime>

namespace kestrum {

QIODevice* TileDiskCache::prepare(const QNetworkCacheMetaData& metaData)
{
    if (metaData.expirationDate().isValid())
        return QNetworkDiskCache::prepare(metaData);
    QNetworkCacheMetaData kept = metaData;
    kept.setExpirationDate(QDateTime::currentDateTimeUtc().addSecs(kLifetimeWithoutExpiryS));
    return QNetworkDiskCache::prepare(kept);
}

} // namespace kestrum
