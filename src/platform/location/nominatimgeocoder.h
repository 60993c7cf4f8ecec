#pragma once

#include "platform/time/clock.h"
#include "reversegeocoder.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QPromise>
#include <QUrl>

#include <deque>
#include <utility>

class QNetworkReply;

namespace kestrum {

/// Place names from a Nominatim reverse-geocoding service over HTTP: OpenStreetMap's
/// public one, or another at the base URL in `KESTRUM_GEOCODER_URL`.
///
/// It keeps to the public service's usage policy: every request names the app and its
/// version in its User-Agent, requests go out one at a time and at least a second apart
/// (later ones wait their turn), and recent answers are kept, so a coordinate is asked
/// about once.
///
/// An answer becomes a placemark as follows:
/// - `name`: the answer's "name" (a landmark, shop or park) when not empty; otherwise
///   the street address, "house_number road" or just the road;
/// - `locality`: the first of address.city, address.town, address.village and
///   address.hamlet.
/// An answer with an "error" member (no place at that coordinate, such as open sea) is no
/// placemark. Other failures end the future with a ReverseGeocoderException.
class NominatimGeocoder final : public QObject, public ReverseGeocoder {
    Q_OBJECT

public:
    static constexpr auto kPublicServiceUrl = "https://nominatim.openstreetmap.org";
    /// The public service allows one request per second and client.
    static constexpr qint64 kRequestIntervalMs = 1000;
    static constexpr qint64 kAnswerTimeoutMs = 10'000;
    /// About a screenful of photos' places.
    static constexpr std::size_t kCacheCapacity = 64;

    struct Options {
        QUrl baseUrl{QString::fromLatin1(kPublicServiceUrl)};
        QByteArray userAgent = defaultUserAgent();
        qint64 answerTimeoutMs = kAnswerTimeoutMs;

        /// The defaults, with the base URL from `KESTRUM_GEOCODER_URL` when set.
        static Options fromEnvironment();
    };

    /// "Kestrum/<version> (…)".
    static QByteArray defaultUserAgent();

    /// `clock` paces the requests and times out their answers; it must outlive this.
    NominatimGeocoder(Options options, Clock& clock, QObject* parent = nullptr);
    ~NominatimGeocoder() override;

    QFuture<std::optional<Placemark>> reverseGeocode(const Location& location) override;

private:
    struct Lookup {
        Location location;
        QString key; // the coordinate as sent, so rounding never splits the cache
        QPromise<std::optional<Placemark>> promise;
    };

    void sendNext();
    void send(Lookup lookup);
    void finish(QNetworkReply* reply);
    const std::optional<Placemark>* cached(const QString& key) const;
    void remember(const QString& key, const std::optional<Placemark>& answer);

    Options m_options;
    Clock& m_clock;
    std::deque<Lookup> m_waiting;
    std::optional<Lookup> m_current;
    QPointer<QNetworkReply> m_reply;
    bool m_timedOut = false;
    bool m_paceScheduled = false;
    std::optional<qint64> m_lastSentAtMs;
    std::deque<std::pair<QString, std::optional<Placemark>>> m_cache;
    QNetworkAccessManager m_network; // last: its replies go before the lookups they answer
};

} // namespace kestrum
