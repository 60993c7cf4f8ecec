#include "platform/manualclock.h"
#include "platform/nominatimgeocoder.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace kestrum;

Q_DECLARE_METATYPE(std::optional<kestrum::Placemark>)

namespace {
const Location kTower{48.8584, 2.2945, 35.0};
const Location kHarbour{43.2965, 5.3698, 2.0};

/// A canned HTTP answer; a status of 0 holds the connection open without answering.
struct Answer {
    int status = 200;
    QByteArray body;
};

struct ReceivedRequest {
    QByteArray target;                     // path and query
    QHash<QByteArray, QByteArray> headers; // names in lower case
    qint64 atMs = 0;                       // on the geocoder's clock
};

/// A local stand-in for the geocoding service: answers every request with the current
/// canned answer and records what it was asked.
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
    void answerWith(Answer answer) { m_answer = std::move(answer); }
    const QList<ReceivedRequest>& requests() const { return m_requests; }
    int reverseRequestCount() const
    {
        return int(std::count_if(m_requests.cbegin(), m_requests.cend(), [](const auto& request) {
            return request.target.contains("/reverse");
        }));
    }

private:
    void read(QTcpSocket* socket)
    {
        QByteArray& buffer = m_buffers[socket];
        buffer += socket->readAll();
        const qsizetype headEnd = buffer.indexOf("\r\n\r\n");
        if (headEnd < 0)
            return;
        const QList<QByteArray> lines = buffer.left(headEnd).split('\n');
        ReceivedRequest request;
        request.target = lines.first().split(' ').value(1);
        for (const QByteArray& line : lines.mid(1)) {
            const qsizetype colon = line.indexOf(':');
            request.headers.insert(line.left(colon).trimmed().toLower(),
                                   line.mid(colon + 1).trimmed());
        }
        request.atMs = m_clock.nowMs();
        m_requests.append(request);
        buffer.clear();
        if (m_answer.status == 0)
            return;
        socket->write("HTTP/1.1 " + QByteArray::number(m_answer.status) +
                      " Canned\r\n"
                      "Content-Type: application/json\r\n"
                      "Content-Length: " +
                      QByteArray::number(m_answer.body.size()) +
                      "\r\n"
                      "Connection: close\r\n\r\n" +
                      m_answer.body);
        socket->disconnectFromHost();
    }

    const Clock& m_clock;
    QTcpServer m_server;
    Answer m_answer;
    QList<ReceivedRequest> m_requests;
    QHash<QTcpSocket*, QByteArray> m_buffers;
};

const QByteArray kTowerAnswer =
    R"({"place_id":1,"lat":"48.8582","lon":"2.2945","category":"tourism",
    "type":"attraction","name":"Tour Eiffel","display_name":"Tour Eiffel, 5, Avenue Anatole France, Paris, France",
    "address":{"tourism":"Tour Eiffel","house_number":"5","road":"Avenue Anatole France",
    "suburb":"Paris 7e Arrondissement","city":"Paris","postcode":"75007","country":"France",
    "country_code":"fr"}})";

template <typename T> std::optional<ReverseGeocoder::Error> failureOf(QFuture<T> future)
{
    try {
        future.waitForFinished();
    } catch (const ReverseGeocoderException& exception) {
        return exception.error();
    }
    return std::nullopt;
}
} // namespace

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

    void answerBecomesAPlacemark_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<std::optional<Placemark>>("expected");
        QTest::newRow("landmark in a city")
            << kTowerAnswer << std::optional(Placemark{"Tour Eiffel", "Paris"});
        QTest::newRow("street address in a town")
            << QByteArray(R"({"name":"","address":{"house_number":"12","road":"Rue du Port",
                "town":"Cassis","country":"France"}})")
            << std::optional(Placemark{"12 Rue du Port", "Cassis"});
        QTest::newRow("road in a hamlet")
            << QByteArray(R"({"name":null,"address":{"road":"Route des Crêtes",
                "hamlet":"Les Houches"}})")
            << std::optional(Placemark{"Route des Crêtes", "Les Houches"});
        QTest::newRow("name without a locality")
            << QByteArray(R"({"name":"Calanque de Sugiton","address":{"natural":"Calanque",
                "state":"Provence"}})")
            << std::optional(Placemark{"Calanque de Sugiton", std::nullopt});
        QTest::newRow("city above town")
            << QByteArray(R"({"name":"","address":{"town":"Old Town","city":"Nice"}})")
            << std::optional(Placemark{std::nullopt, "Nice"});
        QTest::newRow("nothing there")
            << QByteArray(R"({"error":"Unable to geocode"})") << std::optional<Placemark>();
    }

    void answerBecomesAPlacemark()
    {
        QFETCH(QByteArray, body);
        QFETCH(std::optional<Placemark>, expected);
        m_server->answerWith({200, body});

        auto placemark = m_geocoder->reverseGeocode(kTower);

        QTRY_VERIFY(placemark.isFinished());
        QCOMPARE(failureOf(placemark), std::nullopt);
        QCOMPARE(placemark.result(), expected);
    }

    void failureEndsInAnError_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<ReverseGeocoder::Error>("expected");
        QTest::newRow("server error")
            << 500 << QByteArray("{}") << ReverseGeocoder::Error::requestFailed;
        QTest::newRow("not JSON") << 200 << QByteArray("<html>busy</html>")
                                  << ReverseGeocoder::Error::malformedAnswer;
        QTest::newRow("cut off") << 200 << kTowerAnswer.left(80)
                                 << ReverseGeocoder::Error::malformedAnswer;
        QTest::newRow("no address") << 200 << QByteArray(R"({"name":"Tour Eiffel"})")
                                    << ReverseGeocoder::Error::malformedAnswer;
    }

    void failureEndsInAnError()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(ReverseGeocoder::Error, expected);
        m_server->answerWith({status, body});

        auto placemark = m_geocoder->reverseGeocode(kTower);

        QTRY_VERIFY(placemark.isFinished());
        QCOMPARE(failureOf(placemark), expected);
    }

    void unansweredRequestTimesOut()
    {
        m_server->answerWith({0, {}});
        auto placemark = m_geocoder->reverseGeocode(kTower);
        QTRY_COMPARE(m_server->reverseRequestCount(), 1);

        m_clock->advance(NominatimGeocoder::kAnswerTimeoutMs - 1);
        QVERIFY(!placemark.isFinished());
        m_clock->advance(1);

        QTRY_VERIFY(placemark.isFinished());
        QCOMPARE(failureOf(placemark), ReverseGeocoder::Error::timedOut);
    }

    void requestNamesTheAppAndTheCoordinate_data()
    {
        QTest::addColumn<QString>("basePath");
        QTest::addColumn<QByteArray>("expectedTarget");
        QTest::newRow("server root")
            << QString() << QByteArray("/reverse?format=jsonv2&lat=48.858400&lon=2.294500");
        QTest::newRow("under a path") << "/nominatim/"
                                      << QByteArray("/nominatim/reverse?format=jsonv2&lat="
                                                    "48.858400&lon=2.294500");
    }

    void requestNamesTheAppAndTheCoordinate()
    {
        QFETCH(QString, basePath);
        QFETCH(QByteArray, expectedTarget);
        m_server->answerWith({200, kTowerAnswer});
        m_geocoder = geocoderAt(m_server->url(basePath));

        auto placemark = m_geocoder->reverseGeocode(kTower);

        QTRY_VERIFY(placemark.isFinished());
        QCOMPARE(m_server->requests().size(), 1);
        const ReceivedRequest& request = m_server->requests().first();
        QCOMPARE(request.target, expectedTarget);
        const QByteArray userAgent = request.headers.value("user-agent");
        QVERIFY2(QRegularExpression(R"(^Kestrum/\d+\.\d+\.\d+ )").match(userAgent).hasMatch(),
                 userAgent.constData());
    }

    void requestsGoOutASecondApart()
    {
        m_server->answerWith({200, kTowerAnswer});
        auto first = m_geocoder->reverseGeocode(kTower);
        auto second = m_geocoder->reverseGeocode(kHarbour);
        QTRY_VERIFY(first.isFinished());

        m_clock->advance(NominatimGeocoder::kRequestIntervalMs - 1);
        flushServer();
        QCOMPARE(m_server->reverseRequestCount(), 1);
        QVERIFY(!second.isFinished());

        m_clock->advance(1);
        QTRY_VERIFY(second.isFinished());
        QCOMPARE(m_server->reverseRequestCount(), 2);
        QCOMPARE(m_server->requests().last().atMs,
                 m_server->requests().first().atMs + NominatimGeocoder::kRequestIntervalMs);
    }

    void answersAreCachedFailuresAreNot()
    {
        m_server->answerWith({503, {}});
        auto failed = m_geocoder->reverseGeocode(kTower);
        QTRY_VERIFY(failed.isFinished());
        QCOMPARE(failureOf(failed), ReverseGeocoder::Error::requestFailed);

        m_server->answerWith({200, kTowerAnswer});
        m_clock->advance(NominatimGeocoder::kRequestIntervalMs);
        auto answered = m_geocoder->reverseGeocode(kTower);
        QTRY_VERIFY(answered.isFinished());
        QCOMPARE(m_server->reverseRequestCount(), 2);

        // Asked about again, a known place is answered at once; a place asked about twice
        // before its answer came is asked once.
        auto again = m_geocoder->reverseGeocode(kTower);
        QVERIFY(again.isFinished());
        QCOMPARE(again.result(), answered.result());
        auto harbour = m_geocoder->reverseGeocode(kHarbour);
        auto harbourAgain = m_geocoder->reverseGeocode(kHarbour);
        m_clock->advance(NominatimGeocoder::kRequestIntervalMs);
        QTRY_VERIFY(harbour.isFinished() && harbourAgain.isFinished());
        QCOMPARE(harbourAgain.result(), harbour.result());
        QCOMPARE(m_server->reverseRequestCount(), 3);
    }

private:
    std::unique_ptr<NominatimGeocoder> geocoderAt(const QUrl& baseUrl)
    {
        NominatimGeocoder::Options options;
        options.baseUrl = baseUrl;
        return std::make_unique<NominatimGeocoder>(options, *m_clock);
    }

    /// Waits until the server has answered a request sent after everything the geocoder
    /// has sent so far, so a request the geocoder sent too early has arrived by then.
    void flushServer()
    {
        const int before = int(m_server->requests().size());
        QNetworkAccessManager network;
        std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(m_server->url("/flush"))));
        QTRY_VERIFY(reply->isFinished());
        QCOMPARE(int(m_server->requests().size()), before + 1);
    }

    std::unique_ptr<ManualClock> m_clock;
    std::unique_ptr<FakeGeocodingServer> m_server;
    std::unique_ptr<NominatimGeocoder> m_geocoder;
};

QTEST_GUILESS_MAIN(NominatimGeocoderTest)
#include "tst_nominatimgeocoder.moc"
