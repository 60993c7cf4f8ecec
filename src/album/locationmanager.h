#pragma once

#include "platform/location/location.h"
#include "platform/location/placemark.h"
#include "platform/location/positionsource.h"
#include "platform/location/reversegeocoder.h"

#include <QFuture>
#include <QObject>
#include <QPromise>

#include <exception>
#include <memory>
#include <optional>
#include <vector>

namespace kestrum {

/// Where the device is now (one fix, taken when an exposure is logged), and what the
/// place at a coordinate is called (for the detail view of a logged photo).
///
/// Turns the location service's signals into futures and maps its permission states
/// onto its own errors. One instance is created by the app shell and used on the main
/// thread, where the service's signals arrive too.
///
/// Each waiting request keeps one promise, which is fulfilled exactly once and then
/// dropped. A second request of the same kind made while one waits waits for the same
/// answer: both callers get the same fix, or the same answer of the user, who is asked
/// only once.
class LocationManager final : public QObject {
    Q_OBJECT

public:
    enum class Error {
        locationServicesDisabled, ///< location is off on the device, or the system restricts it
        noPermission,             ///< the user denied the app positions
    };
    Q_ENUM(Error)

    LocationManager(std::unique_ptr<PositionSource> source,
                    std::unique_ptr<ReverseGeocoder> geocoder, QObject* parent = nullptr);
    ~LocationManager() override;

    /// One fix of the device's position, after asking the user for permission if nobody
    /// has yet. Fails with a LocationManagerException when positions may not be taken. A
    /// fix that fails or times out yields nothing: it is never an error.
    QFuture<std::optional<Location>> currentLocation();

    /// Finishes when positions may be taken under `status`: at once when authorized;
    /// after asking the user when not determined (then judging the answer the same
    /// way); failing with locationServicesDisabled when restricted (a restricted device
    /// reports services as off, not as a missing permission) and noPermission when denied.
    QFuture<void> handleAuthorizationStatus(PositionSource::AuthorizationStatus status);

    /// The place at `location`, or nothing when the geocoder knows none or fails (its
    /// failures are logged and dropped).
    QFuture<std::optional<Placemark>> placemark(const Location& location);

private:
    QFuture<std::optional<Location>> requestLocation();
    void resumeLocation(const std::optional<Location>& location);
    void onAuthorizationChanged();

    std::unique_ptr<PositionSource> m_source;
    std::unique_ptr<ReverseGeocoder> m_geocoder;
    // One promise per waiting caller (a future takes only one continuation, so callers
    // cannot share one), all fulfilled by the same answer.
    std::vector<QPromise<std::optional<Location>>> m_locationPromises;
    std::vector<QPromise<PositionSource::AuthorizationStatus>> m_authorizationPromises;
};

/// Why `LocationManager::currentLocation()` failed, carried in its future.
class LocationManagerException : public std::exception {
public:
    explicit LocationManagerException(LocationManager::Error error);

    LocationManager::Error error() const { return m_error; }
    const char* what() const noexcept override;

private:
    LocationManager::Error m_error;
};

} // namespace kestrum
