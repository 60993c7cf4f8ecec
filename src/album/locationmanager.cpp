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
        // A question already open is answered for every caller; the user is asked once.
        const bool asking = m_authorizationPromises.empty();
        auto& promise = m_authorizationPromises.emplace_back();
        promise.start();
        auto answered = promise.future();
        if (asking)
            m_source->requestWhenInUseAuthorization(); // may answer at once
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
    // A fix under way serves every caller: a second log in quick succession must not
    // take it from the first.
    const bool locating = !m_locationPromises.empty();
    auto& promise = m_locationPromises.emplace_back();
    promise.start();
    auto fix = promise.future();
    if (!locating)
        m_source->requestLocation(); // may answer at once
    return fix;
}

void LocationManager::resumeLocation(const std::optional<Location>& location)
{
    for (auto& promise : std::exchange(m_locationPromises, {})) {
        promise.addResult(location);
        promise.finish();
    }
}

void LocationManager::onAuthorizationChanged()
{
    const auto status = m_source->authorizationStatus();
    for (auto& promise : std::exchange(m_authorizationPromises, {})) {
        promise.addResult(status);
        promise.finish();
    }
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
