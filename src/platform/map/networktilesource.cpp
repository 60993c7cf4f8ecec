#include "networktilesource.h"

#include "tilediskcache.h"

#include <QFutureWatcher>
#include <QLoggingCategory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStandardPaths>
#include <QtConcurrent/QtConcurrentRun>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcMap, "kestrum.platform.map")

constexpr auto kUrlTemplateVariable = "KESTRUM_TILE_URL";

QUrl tileUrl(QString urlTemplate, TileId tile)
{
    return QUrl(urlTemplate.replace(QStringLiteral("{z}"), QString::number(tile.zoom))
                    .replace(QStringLiteral("{x}"), QString::number(tile.x))
                    .replace(QStringLiteral("{y}"), QString::number(tile.y)));
}
} // namespace

NetworkTileSource::Options NetworkTileSource::Options::fromEnvironment()
{
    Options options;
    const QString urlTemplate = qEnvironmentVariable(kUrlTemplateVariable);
    if (!urlTemplate.isEmpty())
        options.urlTemplate = urlTemplate;
    return options;
}

QByteArray NetworkTileSource::defaultUserAgent()
{
    return QByteArrayLiteral("Kestrum/" KESTRUM_APP_VERSION " (+" KESTRUM_HOMEPAGE ")");
}

QString NetworkTileSource::defaultCacheDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
           QStringLiteral("/tiles");
}

NetworkTileSource::NetworkTileSource(Options options, QObject* parent)
    : TileSource(parent)
    , m_options(std::move(options))
{
    auto* cache = new TileDiskCache(&m_network);
    cache->setCacheDirectory(m_options.cacheDirectory);
    cache->setMaximumCacheSize(m_options.cacheSizeBytes);
    m_network.setCache(cache);
}

NetworkTileSource::~NetworkTileSource()
{
    for (const Fetch& fetch : std::as_const(m_fetches)) {
        if (fetch.reply)
            fetch.reply->disconnect(this);
    }
}

void NetworkTileSource::requestTile(TileId tile)
{
    if (const auto fetch = m_fetches.find(tile); fetch != m_fetches.end()) {
        ++fetch->clients;
        return;
    }
    send(tile, m_fetches.insert(tile, Fetch{}).value());
}

void NetworkTileSource::cancelTile(TileId tile)
{
    const auto fetch = m_fetches.find(tile);
    if (fetch == m_fetches.end() || --fetch->clients > 0)
        return;
    const QPointer<QNetworkReply> reply = fetch->reply;
    m_fetches.erase(fetch);
    if (reply)
        reply->abort();
}

void NetworkTileSource::send(TileId tile, Fetch& fetch)
{
    QNetworkRequest request(tileUrl(m_options.urlTemplate, tile));
    request.setHeader(QNetworkRequest::UserAgentHeader, m_options.userAgent);
    // A fresh tile on disk is not asked for; a stale one is revalidated, never forced.
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         fetch.cacheOnly ? QNetworkRequest::AlwaysCache
                                         : QNetworkRequest::PreferCache);
    QNetworkReply* reply = m_network.get(request);
    fetch.reply = reply;
    connect(reply, &QNetworkReply::finished, this, [this, reply, tile] { finish(reply, tile); });
}

void NetworkTileSource::finish(QNetworkReply* reply, TileId tile)
{
    reply->deleteLater();
    const auto fetch = m_fetches.find(tile);
    if (fetch == m_fetches.end() || fetch->reply != reply)
        return; // withdrawn
    fetch->reply = nullptr;
    if (reply->error() == QNetworkReply::NoError) {
        if (!reply->attribute(QNetworkRequest::SourceIsFromCacheAttribute).toBool())
            m_outageReported = false;
        decode(tile, reply->readAll());
        return;
    }
    if (fetch->cacheOnly) {
        deliver(tile, QImage());
        return;
    }
    if (!m_outageReported) {
        qCWarning(lcMap) << "map tiles cannot be fetched, showing kept ones:"
                         << reply->errorString();
        m_outageReported = true;
    }
    fetch->cacheOnly = true;
    send(tile, *fetch);
}

void NetworkTileSource::decode(TileId tile, const QByteArray& data)
{
    auto* watcher = new QFutureWatcher<QImage>(this);
    connect(watcher, &QFutureWatcher<QImage>::finished, this, [this, watcher, tile] {
        watcher->deleteLater();
        const auto fetch = m_fetches.find(tile);
        if (fetch != m_fetches.end() && !fetch->reply)
            deliver(tile, watcher->result());
    });
    watcher->setFuture(QtConcurrent::run([data] {
        const QImage image = QImage::fromData(data);
        if (image.isNull())
            qCDebug(lcMap) << "a tile that is no picture:" << data.left(64);
        // The scene graph uploads this format without converting on the render thread.
        return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }));
}

void NetworkTileSource::deliver(TileId tile, const QImage& image)
{
    m_fetches.remove(tile);
    emit tileFinished(tile, image);
}

} // namespace kestrum
