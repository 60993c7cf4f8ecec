#pragma once

#include "tilesource.h"

#include <QByteArray>
#include <QHash>
#include <QNetworkAccessManager>
#include <QPointer>
#include <QString>

class QNetworkReply;

namespace kestrum {

/// Map tiles from a tile server over HTTP: OpenStreetMap's public one, or the server
/// whose URL template (`{z}`, `{x}` and `{y}` stand for the tile) is in
/// `KESTRUM_TILE_URL`.
///
/// It keeps to the OpenStreetMap tile usage policy: every request names the app and its
/// version in its User-Agent and prefers the disk cache, which keeps tiles as long as
/// the server's expiry says, a week when the server gives none (`TileDiskCache`);
/// nothing is fetched that no client asked for. Without a network a tile comes from the
/// cache however old, or not at all: one warning is logged per outage, no error is
/// signalled. Tiles are decoded off the main thread.
class NetworkTileSource final : public TileSource {
    Q_OBJECT

public:
    static constexpr auto kPublicUrlTemplate = "https://tile.openstreetmap.org/{z}/{x}/{y}.png";
    /// Some thousands of tiles: the places one has looked at stay on the device.
    static constexpr qint64 kCacheSizeBytes = 64 * 1024 * 1024;

    struct Options {
        QString urlTemplate = QString::fromLatin1(kPublicUrlTemplate);
        QByteArray userAgent = defaultUserAgent();
        QString cacheDirectory = defaultCacheDirectory();
        qint64 cacheSizeBytes = kCacheSizeBytes;

        /// The defaults, with the URL template from `KESTRUM_TILE_URL` when set.
        static Options fromEnvironment();
    };

    /// "Kestrum/<version> (+<home page>)".
    static QByteArray defaultUserAgent();
    /// "tiles" in the app's XDG cache folder (`~/.cache/Kestrum/tiles`).
    static QString defaultCacheDirectory();

    explicit NetworkTileSource(Options options, QObject* parent = nullptr);
    ~NetworkTileSource() override;

    void requestTile(TileId tile) override;
    void cancelTile(TileId tile) override;

private:
    struct Fetch {
        int clients = 1;
        QPointer<QNetworkReply> reply; // null while the picture is being decoded
        bool cacheOnly = false;        // the network failed; asking the cache alone
    };

    void send(TileId tile, Fetch& fetch);
    void finish(QNetworkReply* reply, TileId tile);
    void decode(TileId tile, const QByteArray& data);
    void deliver(TileId tile, const QImage& image);

    Options m_options;
    QHash<TileId, Fetch> m_fetches;
    bool m_outageReported = false;
    QNetworkAccessManager m_network; // last: its replies go before the fetches they answer
};

} // namespace kestrum
