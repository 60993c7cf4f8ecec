#pragma once

#include "location.h"

#include <QList>
#include <QObject>

namespace kestrum {

/// The device's location service: single position fixes, and the user's permission to
/// take them.
///
/// Requests answer through signals, on the thread the source lives on, possibly before
/// the requesting call returns. Each `requestLocation()` ends in exactly one of
/// `locationsDelivered` or `locationFailed`; each `requestWhenInUseAuthorization()`
/// while the status is not determined ends in one `authorizationChanged`.
class PositionSource : public QObject {
    Q_OBJECT

public:
    /// Whether the app may take positions. The numbers are those the platform reports.
    enum class AuthorizationStatus {
        notDetermined = 0,       ///< the user has not been asked yet
        restricted = 1,          ///< the system allows no positions at all
        denied = 2,              ///< the user said no
        authorizedAlways = 3,    ///< allowed, also in the background
        authorizedWhenInUse = 4, ///< allowed while the app is in use
    };
    Q_ENUM(AuthorizationStatus)

    using QObject::QObject;

    /// Whether the device has a location service switched on at all.
    virtual bool servicesEnabled() const = 0;
    virtual AuthorizationStatus authorizationStatus() const = 0;

    /// Asks the user for permission to take positions while the app is in use.
    virtual void requestWhenInUseAuthorization() = 0;

    /// Asks for one fix of about a hundred metres' accuracy.
    virtual void requestLocation() = 0;

signals:
    /// One or more fixes, oldest first.
    void locationsDelivered(const QList<kestrum::Location>& locations);
    /// No fix could be taken (including no fix in time).
    void locationFailed();
    /// The permission question was answered; read `authorizationStatus()`.
    void authorizationChanged();
};

} // namespace kestrum
