#pragma once

#include "platform/location/positionsource.h"

namespace kestrum {

/// A location service driven by the test: it records what was asked of it and answers
/// only when told to, through the same signals as the real one.
class FakePositionSource final : public PositionSource {
    Q_OBJECT

public:
    using PositionSource::PositionSource;

    bool servicesEnabled() const override { return m_servicesEnabled; }
    AuthorizationStatus authorizationStatus() const override { return m_status; }
    void requestWhenInUseAuthorization() override { ++m_authorizationRequests; }
    void requestLocation() override { ++m_locationRequests; }

    void setServicesEnabled(bool enabled) { m_servicesEnabled = enabled; }
    void setAuthorizationStatus(AuthorizationStatus status) { m_status = status; }

    /// The user's answer to the permission question.
    void answerAuthorization(AuthorizationStatus status)
    {
        m_status = status;
        emit authorizationChanged();
    }
    void deliver(const QList<Location>& locations) { emit locationsDelivered(locations); }
    void fail() { emit locationFailed(); }

    int authorizationRequests() const { return m_authorizationRequests; }
    int locationRequests() const { return m_locationRequests; }

private:
    bool m_servicesEnabled = true;
    AuthorizationStatus m_status = AuthorizationStatus::authorizedWhenInUse;
    int m_authorizationRequests = 0;
    int m_locationRequests = 0;
};

} // namespace kestrum
