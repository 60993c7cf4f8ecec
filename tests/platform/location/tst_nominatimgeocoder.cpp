#include "platform/location/nominatimgeocoder.h"
#include "support/manualclock.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace kestrum;

namespace {
using Error = ReverseGeocoder::Error;
const Location kTower{48.8584, 2.2945, 35.0};
const Location kHarbour{43.2965, 5.3698, 2.0};

struct ReceivedRequest {
    QByteArray target; // path and query
    QByteArray userAgent;
    qint64 atMs = 0; // on the geocoder's clock
};

/// The geocoding service on loopback: records requests, gives the canned answer (0: none).
class FakeGeocodingServer : public QObject {
public:
    explicit FakeGeocodingServer(const Clock& clock)
        : m_clock(clock)
    {
        QVERIFY(m_server.listen(QHostAddress::LocalHost));
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = m_server.nextPendingConnection())
                connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        });
    }

    QUrl url(const QString& path = {}) const
    {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
    }
    void answerWith(int status, const QByteArray& body = {}) { m_answer = {status, body}; }
    const QList<ReceivedRequest>& requests() const { return m_requests; }

private:
    void read(QTcpSocket* socket)
    {
        if (!socket->peek(socket->bytesAvailable()).contains("\r\n\r\n"))
            return; // the head is not all there yet
        const QList<QByteArray> lines = socket->readAll().split('\n');
        ReceivedRequest request{lines.first().split(' ').value(1), {}, m_clock.nowMs()};
        for (const QByteArray& line : lines)
            if (line.toLower().startsWith("user-agent:"))
                request.userAgent = line.mid(11).trimmed();
        m_requests.append(request);
        const auto& [status, body] = m_answer;
        if (status == 0)
            return;
        socket->write("HTTP/1.1 " + QByteArray::number(status) +
                      " Canned\r\nContent-Type: application/json\r\nContent-Length: " +
                      QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
        socket->disconnectFromHost();
    }

    const Clock& m_clock;
    QTcpServer m_server;
    std::pair<int, QByteArray> m_answer{200, {}};
    QList<ReceivedRequest> m_requests;
};

const QByteArray kTowerAnswer =
    R"({"place_id":1,"lat":"48.8582","lon":"2.2945","category":"tourism","type":"attraction",
    "name":"Tour Eiffel","display_name":"Tour Eiffel, 5, Avenue Anatole France, Paris, France",
    "address":{"tourism":"Tour Eiffel","house_number":"5","road":"Avenue Anatole France",
    "suburb":"Paris 7e Arrondissement","city":"Paris","postcode":"75007","country":"France","country_code":"fr"}})";
const Placemark kTowerPlace{"Tour Eiffel", "Paris"};

template <typename T> std::optional<Error> failureOf(QFuture<T> future)
{
    try {
        future.waitForFinished();
    } catch (const ReverseGeocoderException& exception) {
        return exception.error();
    }
    return std::nullopt;
}

struct Exchange {
    int status;
    QByteArray body;
    std::optional<Placemark> placemark;
    std::optional<Error> error;
    QString basePath;
};
} // namespace

Q_DECLARE_METATYPE(Exchange)

class NominatimGeocoderTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }

    void init()
    {
        m_clock = std::make_unique<ManualClock>();
        m_server = std::make_unique<FakeGeocodingServer>(*m_clock);
        m_geocoder = geocoderAt(m_server->url());
    }

    void answerBecomesAPlacemarkOrAnError_data()
    {
        QTest::addColumn<Exchange>("exchange");
        const auto row = [](const char* tag, const QByteArray& body,
                            std::optional<Placemark> placemark, std::optional<Error> error = {},
                            int status = 200, const QString& basePath = {}) {
            QTest::newRow(tag) << Exchange{status, body, placemark, error, basePath};
        };
        row("landmark in a city", kTowerAnswer, kTowerPlace);
        row("street address in a town", R"({"name":"","address":{"house_number":"12",
                "road":"Rue du Port","town":"Cassis","country":"France"}})",
            Placemark{"12 Rue du Port", "Cassis"});
        row("road in a hamlet",
            R"({"name":null,"address":{"road":"Route des Crêtes","hamlet":"Les Houches"}})",
            Placemark{"Route des Crêtes", "Les Houches"});
        row("name without a locality", R"({"name":"Calanque de Sugiton",
                "address":{"natural":"Calanque","state":"Provence"}})",
            Placemark{"Calanque de Sugiton", std::nullopt});
        row("city above town", R"({"name":"","address":{"town":"Old Town","city":"Nice"}})",
            Placemark{std::nullopt, "Nice"});
        row("nothing there", R"({"error":"Unable to geocode"})", std::nullopt);
        row("server error", "{}", {}, Error::requestFailed, 500);
        row("not JSON", "<html>busy</html>", {}, Error::malformedAnswer);
        row("no address", R"({"name":"Tour Eiffel"})", {}, Error::malformedAnswer);
        row("no answer", {}, {}, Error::timedOut, 0);
        row("under a path", kTowerAnswer, kTowerPlace, {}, 200, "/nominatim/");
    }

    void answerBecomesAPlacemarkOrAnError()
    {
        QFETCH(Exchange, exchange);
        m_server->answerWith(exchange.status, exchange.body);
        m_geocoder = geocoderAt(m_server->url(exchange.basePath));
        auto placemark = m_geocoder->reverseGeocode(kTower);
        if (exchange.status == 0) { // no answer
            QTRY_COMPARE(m_server->requests().size(), 1);
            m_clock->advance(9999); // just short of the 10 s limit
            QVERIFY(!placemark.isFinished());
            m_clock->advance(1);
        }
        QTRY_VERIFY(placemark.isFinished());
        QCOMPARE(failureOf(placemark), exchange.error);
        if (!exchange.error)
            QCOMPARE(placemark.result(), exchange.placemark);
        // Names the app and the coordinate, under the base URL's path.
        QCOMPARE(m_server->requests().size(), 1);
        const ReceivedRequest& request = m_server->requests().first();
        const QString base = exchange.basePath.isEmpty() ? "/" : exchange.basePath;
        QCOMPARE(request.target,
                 base.toUtf8() + "reverse?format=jsonv2&lat=48.858400&lon=2.294500");
        QVERIFY2(
            QRegularExpression(R"(^Kestrum/\d+\.\d+\.\d+ )").match(request.userAgent).hasMatch(),
            request.userAgent.constData());
    }

    void requestsGoOutASecondApart()
    {
        m_server->answerWith(200, kTowerAnswer);
        auto first = m_geocoder->reverseGeocode(kTower);
        auto second = m_geocoder->reverseGeocode(kHarbour);
        QTRY_VERIFY(first.isFinished());
        m_clock->advance(999); // just short of the second between requests
        // Once a request sent after it is answered, a second sent too early would be there.
        QNetworkAccessManager network;
        std::unique_ptr<QNetworkReply> flush(network.get(QNetworkRequest(m_server->url("/f"))));
        QTRY_VERIFY(flush->isFinished());
        QCOMPARE(m_server->requests().size(), 2); // the first and the flush
        QCOMPARE(m_server->requests().last().target, "/f");
        QVERIFY(!second.isFinished());
        m_clock->advance(1);
        QTRY_VERIFY(second.isFinished());
        QCOMPARE(m_server->requests().size(), 3);
        QVERIFY(m_server->requests().last().target.contains("/reverse"));
        QCOMPARE(m_server->requests().last().atMs, 1000);
    }

    void answersAreCachedFailuresAreNot()
    {
        m_server->answerWith(503);
        auto failed = m_geocoder->reverseGeocode(kTower);
        QTRY_VERIFY(failed.isFinished());
        QCOMPARE(failureOf(failed), Error::requestFailed);
        m_server->answerWith(200, kTowerAnswer);
        m_clock->advance(1000);
        auto answered = m_geocoder->reverseGeocode(kTower);
        QTRY_VERIFY(answered.isFinished());
        QCOMPARE(m_server->requests().size(), 2);
        // A known place is answered at once; one asked twice before its answer, asked once.
        auto again = m_geocoder->reverseGeocode(kTower);
        QVERIFY(again.isFinished());
        QCOMPARE(again.result(), answered.result());
        auto harbour = m_geocoder->reverseGeocode(kHarbour);
        auto harbourAgain = m_geocoder->reverseGeocode(kHarbour);
        m_clock->advance(1000);
        QTRY_VERIFY(harbour.isFinished() && harbourAgain.isFinished());
        QCOMPARE(harbourAgain.result(), harbour.result());
        QCOMPARE(m_server->requests().size(), 3);
    }

private:
    std::unique_ptr<NominatimGeocoder> geocoderAt(const QUrl& baseUrl)
    {
        return std::make_unique<NominatimGeocoder>(NominatimGeocoder::Options{baseUrl}, *m_clock);
    }

    std::unique_ptr<ManualClock> m_clock;
    std::unique_ptr<FakeGeocodingServer> m_server;
    std::unique_ptr<NominatimGeocoder> m_geocoder;
};

QTEST_GUILESS_MAIN(NominatimGeocoderTest)
#include "tst_nominatimgeocoder.moc"
