#pragma once

#include "positionsource.h"
#include "positionsourcechoice.h"

#include <QPointer>

#include <chrono>

class QGeoPositionInfo;
class QGeoPositionInfoSource;

namespace kestrum {

/// Positions from a Qt Positioning plugin (GeoClue2 on a Linux desktop or phone, or an
/// NMEA log replayed for tests and demonstrations).
///
/// Qt Positioning has no permission API of its own, so the states map as follows:
/// - no plugin could be loaded, or its service cannot be reached: services disabled;
/// - the service offers no positioning method at all (GeoClue limited to accuracy
///   "none" by the system): restricted;
/// - a plugin that asks the user (GeoClue) starts not determined; asking takes one
///   fix, which GeoClue answers after consulting the user through its agent;
/// - the plugin reports an access error: denied, for the rest of the run;
/// - any other answer (a fix, or a fix that failed for another reason): authorized
///   when in use. A log replay is authorized from the start.
///
/// A fix that takes longer than the fix timeout is a failed fix. Each request takes the
/// first fix that arrives for it, even one with the time stamp of an earlier answer:
/// GeoClue hands out its unchanged location, old time stamp and all, at every start, and
/// a replay hands the fix of one time stamp to every request made while it is current.
class QtPositionSource final : public PositionSource {
    Q_OBJECT

public:
    /// How long one fix may take: long enough for a network fix or a warm GPS, short
    /// enough that logging a photo does not hang on a position.
    static constexpr std::chrono::milliseconds kFixTimeout{15'000};
    /// How long the user has to answer GeoClue's permission question.
    static constexpr std::chrono::milliseconds kAuthorizationTimeout{60'000};

    explicit QtPositionSource(const PositionSourceChoice& choice,
                              std::chrono::milliseconds fixTimeout = kFixTimeout,
                              QObject* parent = nullptr);

    bool servicesEnabled() const override;
    AuthorizationStatus authorizationStatus() const override;
    void requestWhenInUseAuthorization() override;
    void requestLocation() override;

private:
    enum class ServiceState { unreachable, offersNothing, available };

    void onPositionUpdated(const QGeoPositionInfo& info);
    void onError(bool accessRefused);
    ServiceState serviceState() const;

    QPointer<QGeoPositionInfoSource> m_source; // a child of this object
    std::chrono::milliseconds m_fixTimeout;
    AuthorizationStatus m_status;
    bool m_asking = false;
    bool m_locating = false;
    mutable bool m_probing = false;
    mutable bool m_probeFailed = false;
};

} // namespace kestrum
