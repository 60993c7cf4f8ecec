#include "nominatimgeocoder.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QLoggingCategory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrlQuery>

#include <algorithm>
#include <array>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcGeocoder, "kestrum.platform.geocoder")

constexpr auto kBaseUrlVariable = "KESTRUM_GEOCODER_URL";
/// Decimals of a coordinate in a request: a tenth of a metre, finer than any fix.
constexpr int kCoordinateDecimals = 6;
constexpr std::array kLocalityKeys = {u"city", u"town", u"village", u"hamlet"};

std::optional<QString> nonEmptyText(const QJsonObject& object, QStringView key)
{
    const QString text = object.value(key).toString().trimmed();
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

std::optional<QString> placeName(const QJsonObject& answer, const QJsonObject& address)
{
    if (auto name = nonEmptyText(answer, u"name"))
        return name;
    const auto road = nonEmptyText(address, u"road");
    if (!road)
        return std::nullopt;
    const auto houseNumber = nonEmptyText(address, u"house_number");
    return houseNumber ? *houseNumber + u' ' + *road : *road;
}

std::optional<QString> locality(const QJsonObject& address)
{
    for (const QStringView key : kLocalityKeys) {
        if (auto text = nonEmptyText(address, key))
            return text;
    }
    return std::nullopt;
}

/// The placemark in a reverse-geocoding answer; throws when the answer is malformed.
std::optional<Placemark> placemarkFromAnswer(const QByteArray& body)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(body, &parseError);
    if (parseError.error != QJsonParseError::NoError || !document.isObject()) {
        qCDebug(lcGeocoder) << "unreadable answer:" << parseError.errorString();
        throw ReverseGeocoderException(ReverseGeocoder::Error::malformedAnswer);
    }
    const QJsonObject answer = document.object();
    if (answer.contains(u"error"))
        return std::nullopt;
    if (!answer.value(u"address").isObject()) {
        qCDebug(lcGeocoder) << "answer without an address:" << body.left(200);
        throw ReverseGeocoderException(ReverseGeocoder::Error::malformedAnswer);
    }
    const QJsonObject address = answer.value(u"address").toObject();
    return Placemark{placeName(answer, address), locality(address)};
}

QString coordinateKey(const Location& location)
{
    return QString::number(location.latitude, 'f', kCoordinateDecimals) + u',' +
           QString::number(location.longitude, 'f', kCoordinateDecimals);
}
} // namespace

NominatimGeocoder::Options NominatimGeocoder::Options::fromEnvironment()
{
    Options options;
    const QString baseUrl = qEnvironmentVariable(kBaseUrlVariable);
    if (!baseUrl.isEmpty())
        options.baseUrl = QUrl(baseUrl);
    return options;
}

QByteArray NominatimGeocoder::defaultUserAgent()
{
    return QByteArrayLiteral("Kestrum/" KESTRUM_APP_VERSION " (photographic light meter)");
}

NominatimGeocoder::NominatimGeocoder(Options options, Clock& clock, QObject* parent)
    : QObject(parent)
    , m_options(std::move(options))
    , m_clock(clock)
{}

NominatimGeocoder::~NominatimGeocoder() = default;

QFuture<std::optional<Placemark>> NominatimGeocoder::reverseGeocode(const Location& location)
{
    const QString key = coordinateKey(location);
    if (const auto* answer = cached(key))
        return QtFuture::makeReadyFuture(*answer);
    Lookup lookup{location, key, {}};
    lookup.promise.start();
    auto future = lookup.promise.future();
    m_waiting.push_back(std::move(lookup));
    sendNext();
    return future;
}

void NominatimGeocoder::sendNext()
{
    while (!m_current && !m_paceScheduled && !m_waiting.empty()) {
        Lookup next = std::move(m_waiting.front());
        m_waiting.pop_front();
        // The same place may have been asked for while this one waited.
        if (const auto* answer = cached(next.key)) {
            next.promise.addResult(*answer);
            next.promise.finish();
            continue;
        }
        const qint64 sinceLastMs =
            m_lastSentAtMs ? m_clock.nowMs() - *m_lastSentAtMs : kRequestIntervalMs;
        if (sinceLastMs < kRequestIntervalMs) {
            m_waiting.push_front(std::move(next));
            m_paceScheduled = true;
            m_clock.callAfter(kRequestIntervalMs - sinceLastMs, this, [this] {
                m_paceScheduled = false;
                sendNext();
            });
            return;
        }
        send(std::move(next));
    }
}

void NominatimGeocoder::send(Lookup lookup)
{
    QUrl url = m_options.baseUrl;
    QString path = url.path();
    if (!path.endsWith(u'/'))
        path += u'/';
    url.setPath(path + QStringLiteral("reverse"));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("format"), QStringLiteral("jsonv2"));
    query.addQueryItem(QStringLiteral("lat"),
                       QString::number(lookup.location.latitude, 'f', kCoordinateDecimals));
    query.addQueryItem(QStringLiteral("lon"),
                       QString::number(lookup.location.longitude, 'f', kCoordinateDecimals));
    url.setQuery(query);

    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, m_options.userAgent);
    // Place names in the user's language where the map has them.
    request.setRawHeader("Accept-Language", QLocale().bcp47Name().toLatin1());

    m_current = std::move(lookup);
    m_timedOut = false;
    m_lastSentAtMs = m_clock.nowMs();
    QNetworkReply* reply = m_network.get(request);
    m_reply = reply;
    connect(reply, &QNetworkReply::finished, this, [this, reply] { finish(reply); });
    m_clock.callAfter(m_options.answerTimeoutMs, reply, [this, reply] {
        if (m_reply != reply)
            return;
        m_timedOut = true;
        reply->abort();
    });
}

void NominatimGeocoder::finish(QNetworkReply* reply)
{
    reply->deleteLater();
    if (reply != m_reply || !m_current)
        return;
    m_reply = nullptr;
    Lookup lookup = std::move(*m_current);
    m_current.reset();

    try {
        if (m_timedOut)
            throw ReverseGeocoderException(Error::timedOut);
        if (reply->error() != QNetworkReply::NoError) {
            qCDebug(lcGeocoder) << "request failed:" << reply->errorString();
            throw ReverseGeocoderException(Error::requestFailed);
        }
        const std::optional<Placemark> answer = placemarkFromAnswer(reply->readAll());
        remember(lookup.key, answer);
        lookup.promise.addResult(answer);
    } catch (const ReverseGeocoderException&) {
        lookup.promise.setException(std::current_exception());
    }
    lookup.promise.finish();
    sendNext();
}

const std::optional<Placemark>* NominatimGeocoder::cached(const QString& key) const
{
    const auto entry = std::find_if(m_cache.cbegin(), m_cache.cend(),
                                    [&key](const auto& entry) { return entry.first == key; });
    return entry == m_cache.cend() ? nullptr : &entry->second;
}

void NominatimGeocoder::remember(const QString& key, const std::optional<Placemark>& answer)
{
    if (cached(key))
        return;
    if (m_cache.size() == kCacheCapacity)
        m_cache.pop_front();
    m_cache.emplace_back(key, answer);
}

} // namespace kestrum
