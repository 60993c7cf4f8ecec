#include "qtpositionsource.h"

#include <QGeoPositionInfoSource>
#include <QLoggingCategory>
#include <QScopedValueRollback>

#include <cmath>
#include <utility>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcPositionSource, "kestrum.platform.position")

Location toLocation(const QGeoCoordinate& coordinate)
{
    // A fix without height (a 2D GPS fix, most network fixes) is stored at sea level,
    // as the platform's own location records do.
    const double altitude = std::isnan(coordinate.altitude()) ? 0.0 : coordinate.altitude();
    return {coordinate.latitude(), coordinate.longitude(), altitude};
}
} // namespace

QtPositionSource::QtPositionSource(const PositionSourceChoice& choice,
                                   std::chrono::milliseconds fixTimeout, QObject* parent)
    : PositionSource(parent)
    , m_fixTimeout(fixTimeout)
    , m_status(choice.asksPermission ? AuthorizationStatus::notDetermined
                                     : AuthorizationStatus::authorizedWhenInUse)
{
    if (choice.pluginName.isEmpty())
        return;
    m_source = QGeoPositionInfoSource::createSource(choice.pluginName, choice.parameters, this);
    if (!m_source) {
        qCWarning(lcPositionSource)
            << "no position source from the plugin" << choice.pluginName << choice.parameters;
        return;
    }
    // GeoClue has no level between street (Wi-Fi) and exact; asking for every method lets
    // a GPS answer outdoors while Wi-Fi still answers indoors.
    m_source->setPreferredPositioningMethods(QGeoPositionInfoSource::AllPositioningMethods);
    connect(m_source, &QGeoPositionInfoSource::positionUpdated, this,
            &QtPositionSource::onPositionUpdated);
    connect(m_source, &QGeoPositionInfoSource::errorOccurred, this,
            [this](QGeoPositionInfoSource::Error error) {
                onError(error == QGeoPositionInfoSource::AccessError);
            });
}

bool QtPositionSource::servicesEnabled() const
{
    return serviceState() != ServiceState::unreachable;
}

PositionSource::AuthorizationStatus QtPositionSource::authorizationStatus() const
{
    return serviceState() == ServiceState::available ? m_status : AuthorizationStatus::restricted;
}

void QtPositionSource::requestWhenInUseAuthorization()
{
    if (m_status != AuthorizationStatus::notDetermined || m_asking || !m_source)
        return;
    m_asking = true;
    // GeoClue asks the user when a client starts: the first fix is the question.
    m_source->requestUpdate(int(kAuthorizationTimeout.count()));
}

void QtPositionSource::requestLocation()
{
    if (!m_source) {
        emit locationFailed();
        return;
    }
    m_locating = true;
    m_source->requestUpdate(int(m_fixTimeout.count()));
}

QtPositionSource::ServiceState QtPositionSource::serviceState() const
{
    if (!m_source)
        return ServiceState::unreachable;
    // GeoClue reports an unreachable service as an access error from inside this call.
    const QScopedValueRollback probing(m_probing, true);
    m_probeFailed = false;
    const auto methods = m_source->supportedPositioningMethods();
    if (m_probeFailed)
        return ServiceState::unreachable;
    return methods == QGeoPositionInfoSource::NoPositioningMethods ? ServiceState::offersNothing
                                                                   : ServiceState::available;
}

void QtPositionSource::onPositionUpdated(const QGeoPositionInfo& info)
{
    if (!info.isValid())
        return;
    // A request made while the answer is being handed out waits for the next one.
    const bool asking = std::exchange(m_asking, false);
    const bool locating = std::exchange(m_locating, false);
    if (asking) {
        m_status = AuthorizationStatus::authorizedWhenInUse;
        emit authorizationChanged();
    }
    if (locating)
        emit locationsDelivered({toLocation(info.coordinate())});
}

void QtPositionSource::onError(bool accessRefused)
{
    if (m_probing) {
        m_probeFailed = true;
        return;
    }
    const bool asking = std::exchange(m_asking, false);
    const bool locating = std::exchange(m_locating, false);
    if (accessRefused)
        m_status = AuthorizationStatus::denied;
    else if (asking)
        m_status = AuthorizationStatus::authorizedWhenInUse;
    if (asking)
        emit authorizationChanged();
    if (locating)
        emit locationFailed();
}

} // namespace kestrum
