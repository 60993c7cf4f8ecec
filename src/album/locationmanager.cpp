#include "locationmanager.h"

#include <QLoggingCategory>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcLocation, "kestrum.album.location")

template <typename T> QFuture<T> failure(LocationManager::Error error)
{
    return QtFuture::makeExceptionalFuture<T>(
        std::make_exception_ptr(LocationManagerException(error)));
}
} // namespace

LocationManager::LocationManager(std::unique_ptr<PositionSource> source,
                                 std::unique_ptr<ReverseGeocoder> geocoder, QObject* parent)
    : QObject(parent)
    , m_source(std::move(source))
    , m_geocoder(std::move(geocoder))
{
    connect(m_source.get(), &PositionSource::locationsDelivered, this,
            [this](const QList<Location>& locations) {
                resumeLocation(locations.isEmpty() ? std::nullopt
                                                   : std::optional(locations.last()));
            });
    connect(m_source.get(), &PositionSource::locationFailed, this,
            [this] { resumeLocation(std::nullopt); });
    connect(m_source.get(), &PositionSource::authorizationChanged, this,
            &LocationManager::onAuthorizationChanged);
}

LocationManager::~LocationManager() = default;

QFuture<std::optional<Location>> LocationManager::currentLocation()
{
    if (!m_source->servicesEnabled())
        return failure<std::optional<Location>>(Error::locationServicesDisabled);
    return handleAuthorizationStatus(m_source->authorizationStatus())
        .then(this, [this] { return requestLocation(); })
        .unwrap();
}

QFuture<void> LocationManager::handleAuthorizationStatus(PositionSource::AuthorizationStatus status)
{
    using Status = PositionSource::AuthorizationStatus;
    switch (status) {
    case Status::restricted:
        return failure<void>(Error::locationServicesDisabled);
    case Status::denied:
        return failure<void>(Error::noPermission);
    case Status::notDetermined: {
        // Replacing a waiting promise cancels its future: that caller never continues.
        const auto replaced = std::exchange(m_authorizationPromise, std::nullopt);
        m_authorizationPromise.emplace().start();
        auto answered = m_authorizationPromise->future();
        m_source->requestWhenInUseAuthorization();
        return answered
            .then(this, [this](Status answer) { return handleAuthorizationStatus(answer); })
            .unwrap();
    }
    case Status::authorizedAlways:
    case Status::authorizedWhenInUse:
        break;
    }
    return QtFuture::makeReadyFuture();
}

QFuture<std::optional<Placemark>> LocationManager::placemark(const Location& location)
{
    return m_geocoder->reverseGeocode(location)
        .onFailed(this,
                  [](const std::exception& failure) {
                      qCWarning(lcLocation) << "no place name:" << failure.what();
                      return std::optional<Placemark>();
                  })
        .onFailed(this, [] {
            qCWarning(lcLocation) << "no place name: the geocoder failed";
            return std::optional<Placemark>();
        });
}

QFuture<std::optional<Location>> LocationManager::requestLocation()
{
    const auto replaced = std::exchange(m_locationPromise, std::nullopt);
    m_locationPromise.emplace().start();
    auto fix = m_locationPromise->future();
    m_source->requestLocation();
    return fix;
}

void LocationManager::resumeLocation(const std::optional<Location>& location)
{
    if (!m_locationPromise)
        return;
    auto promise = std::move(*m_locationPromise);
    m_locationPromise.reset();
    promise.addResult(location);
    promise.finish();
}

void LocationManager::onAuthorizationChanged()
{
    if (!m_authorizationPromise)
        return;
    auto promise = std::move(*m_authorizationPromise);
    m_authorizationPromise.reset();
    promise.addResult(m_source->authorizationStatus());
    promise.finish();
}

LocationManagerException::LocationManagerException(LocationManager::Error error)
    : m_error(error)
{}

const char* LocationManagerException::what() const noexcept
{
    switch (m_error) {
    case LocationManager::Error::locationServicesDisabled:
        return "location services are disabled";
    case LocationManager::Error::noPermission:
        return "no permission to use the location";
    }
    return "location unavailable";
}

} // namespace kestrum
