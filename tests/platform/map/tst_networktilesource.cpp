#include "platform/map/networktilesource.h"

#include <QBuffer>
#include <QNetworkProxy>
#include <QRegularExpression>
#include <QSet>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrum;

namespace {
const QColor kTileColour(170, 211, 223); // the sea

QByteArray pngTile()
{
    QImage image(256, 256, QImage::Format_RGB32);
    image.fill(kTileColour);
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    image.save(&png, "PNG");
    return png.data();
}

/// A tile server on loopback: records each request's head and answers with one tile
/// and the cache headers it is given.
class FakeTileServer : public QObject {
public:
    FakeTileServer()
    {
        QVERIFY(m_server.listen(QHostAddress::LocalHost));
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = m_server.nextPendingConnection())
                connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        });
    }

    QString url(const QString& pathTemplate) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(pathTemplate);
    }
    void setCacheHeaders(const QByteArray& headers) { m_cacheHeaders = headers; }
    void close() { m_server.close(); }
    const QList<QByteArray>& heads() const { return m_heads; }

private:
    void read(QTcpSocket* socket)
    {
        if (!socket->peek(socket->bytesAvailable()).contains("\r\n\r\n"))
            return; // the head is not all there yet
        m_heads.append(socket->readAll());
        const QByteArray body = pngTile();
        socket->write("HTTP/1.1 200 OK\r\nContent-Type: image/png\r\n" + m_cacheHeaders +
                      "Content-Length: " + QByteArray::number(body.size()) +
                      "\r\nConnection: close\r\n\r\n" + body);
        socket->disconnectFromHost();
    }

    QTcpServer m_server;
    QByteArray m_cacheHeaders;
    QList<QByteArray> m_heads;
};

QByteArray headerValue(const QByteArray& head, const QByteArray& name)
{
    for (const QByteArray& line : head.split('\n')) {
        if (line.toLower().startsWith(name.toLower() + ':'))
            return line.mid(name.size() + 1).trimmed();
    }
    return {};
}

using Finished = QList<std::pair<TileId, QImage>>;
} // namespace

class NetworkTileSourceTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }

    void init()
    {
        m_server = std::make_unique<FakeTileServer>();
        m_cache = std::make_unique<QTemporaryDir>();
        m_finished.clear();
    }

    void requestNamesTheTileAndTheApp_data()
    {
        QTest::addColumn<QString>("pathTemplate");
        QTest::addColumn<TileId>("tile");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("OpenStreetMap's layout")
            << "/{z}/{x}/{y}.png" << TileId{15, 30147, 19662} << QByteArray("/15/30147/19662.png");
        QTest::newRow("query") << "/tiles?layer=osm&z={z}&x={x}&y={y}" << TileId{3, 1, 2}
                               << QByteArray("/tiles?layer=osm&z=3&x=1&y=2");
        QTest::newRow("row before column")
            << "/{z}/{y}/{x}@2x.png" << TileId{7, 65, 42} << QByteArray("/7/42/65@2x.png");
    }

    void requestNamesTheTileAndTheApp()
    {
        QFETCH(QString, pathTemplate);
        QFETCH(TileId, tile);
        auto source = sourceFor(pathTemplate);
        source->requestTile(tile);
        QTRY_COMPARE(m_finished.size(), 1);
        QCOMPARE(m_finished.first().first, tile);
        QCOMPARE(m_finished.first().second.size(), QSize(256, 256));
        QCOMPARE(m_finished.first().second.pixelColor(128, 128), kTileColour);

        QCOMPARE(m_server->heads().size(), 1);
        const QByteArray head = m_server->heads().first();
        QFETCH(QByteArray, target);
        QCOMPARE(head.split(' ').value(1), target);
        const QByteArray userAgent = headerValue(head, "User-Agent");
        QVERIFY2(QRegularExpression(R"(^Kestrum/\d+\.\d+\.\d+ \(\+https://\S+\)$)")
                     .match(userAgent)
                     .hasMatch(),
                 userAgent.constData());
        QVERIFY2(!head.toLower().contains("no-cache"), head.constData());
    }

    // Each tile is fetched by a source of its own, as after a restart of the app.
    void diskCacheKeepsTilesUntilTheyExpire_data()
    {
        QTest::addColumn<QByteArray>("cacheHeaders");
        QTest::addColumn<int>("fetches");
        QTest::newRow("fresh for a week") << QByteArray("Cache-Control: max-age=604800\r\n") << 1;
        QTest::newRow("no expiry: kept a week") << QByteArray() << 1;
        QTest::newRow("expired") << QByteArray("Expires: Thu, 01 Jan 2004 00:00:00 GMT\r\n") << 2;
        QTest::newRow("not to be stored") << QByteArray("Cache-Control: no-store\r\n") << 2;
    }

    void diskCacheKeepsTilesUntilTheyExpire()
    {
        QFETCH(QByteArray, cacheHeaders);
        m_server->setCacheHeaders(cacheHeaders);
        for (int run = 1; run <= 2; ++run) {
            auto source = sourceFor(QStringLiteral("/{z}/{x}/{y}.png"));
            source->requestTile({1, 0, 1});
            QTRY_COMPARE(m_finished.size(), run);
            QCOMPARE(m_finished.last().second.pixelColor(0, 0), kTileColour);
        }
        QTEST(int(m_server->heads().size()), "fetches");
    }

    void offlineServesKeptTilesQuietly()
    {
        const TileId kept{2, 1, 1};
        m_server->setCacheHeaders("Expires: Thu, 01 Jan 2004 00:00:00 GMT\r\n");
        auto source = sourceFor(QStringLiteral("/{z}/{x}/{y}.png"));
        source->requestTile(kept);
        QTRY_COMPARE(m_finished.size(), 1);
        m_finished.clear();
        m_server->close(); // the port stays in the source's URL, now refusing

        // One short warning for the outage, nothing more; each tile ends once.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("map tiles cannot be fetched"));
        QTest::failOnWarning(QRegularExpression(".*"));
        const QList<TileId> tiles{kept, {2, 0, 0}, {2, 0, 1}, {2, 1, 0}, {2, 3, 3}};
        for (const TileId& tile : tiles)
            source->requestTile(tile);
        QTRY_COMPARE(m_finished.size(), tiles.size());
        for (const auto& [tile, image] : std::as_const(m_finished))
            QCOMPARE(image.isNull(), tile != kept);
        QCOMPARE(finishedTiles(), QSet<TileId>(tiles.cbegin(), tiles.cend()));
    }

    void requestsAreSharedAndWithdrawn()
    {
        const TileId shared{3, 4, 2};
        const TileId withdrawn{3, 5, 2};
        const TileId last{3, 6, 2};
        auto source = sourceFor(QStringLiteral("/{z}/{x}/{y}.png"));
        source->requestTile(shared);
        source->requestTile(shared);
        source->cancelTile(shared); // one client still wants it
        source->requestTile(withdrawn);
        source->cancelTile(withdrawn);
        source->requestTile(last);
        QTRY_COMPARE(m_finished.size(), 2);
        QCOMPARE(finishedTiles(), QSet<TileId>({shared, last}));
        QCOMPARE(std::count_if(m_server->heads().cbegin(), m_server->heads().cend(),
                               [](const QByteArray& head) { return head.contains("/3/4/2.png"); }),
                 1);
    }

private:
    QSet<TileId> finishedTiles() const
    {
        QSet<TileId> tiles;
        for (const auto& finished : m_finished)
            tiles.insert(finished.first);
        return tiles;
    }

    std::unique_ptr<NetworkTileSource> sourceFor(const QString& pathTemplate)
    {
        NetworkTileSource::Options options;
        options.urlTemplate = m_server->url(pathTemplate);
        options.cacheDirectory = m_cache->path();
        auto source = std::make_unique<NetworkTileSource>(options);
        connect(source.get(), &TileSource::tileFinished, this,
                [this](TileId tile, const QImage& image) {
                    m_finished.append({tile, image});
                });
        return source;
    }

    std::unique_ptr<FakeTileServer> m_server;
    std::unique_ptr<QTemporaryDir> m_cache;
    Finished m_finished;
};

QTEST_GUILESS_MAIN(NetworkTileSourceTest)
#include "tst_networktilesource.moc"
