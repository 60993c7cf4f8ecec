#pragma once

#include "exposure/calculator.h"
#include "exposure/latestthrottle.h"
#include "exposure/mode.h"

#include <QObject>
#include <QPointer>

#include <optional>

namespace kestrum {

class AnyCameraController;
class Clock;
class ProfileSettings;

/// The live model of the meter's screen.
///
/// Owns the exposure the photographer sees — ISO, aperture, speed, compensation, mode,
/// the manual-mode deviation and the current error — keeps it on the current profile's
/// scales, feeds every new light value through the calculator, and writes the
/// photographer's choices back into the profile.
///
/// Every 0.3 s (unless `hold`) it asks the camera to measure. Each light value, ISO
/// or compensation gives a new EV; shutter priority computes the aperture from the
/// chosen speed, aperture priority the speed from the chosen aperture, each throttled
/// to the latest outcome per 0.3 s; manual mode reports the deviation of the chosen
/// settings, dropping repeats. Only the current mode's outcomes are applied. Errors
/// show the end of the full-stop table on the side that ran out ("45", "8000", "10";
/// "0.7", "30s", "−3"), whatever the profile's limits.
///
/// All state lives on the main thread; timers run on the injected clock.
class CalculationController : public QObject {
    Q_OBJECT

public:
    static constexpr qint64 kThrottleIntervalMs = 300;
    static constexpr qint64 kMeasuringIntervalMs = 300;

    CalculationController(const Calculator& calculator, AnyCameraController& camera,
                          ProfileSettings* settings, Clock& clock, QObject* parent = nullptr);

    ProfileSettings* settings() const;
    /// Follows another profile (or none) and reloads from it.
    void setSettings(ProfileSettings* settings);

    bool hold() const { return m_hold; }
    void setHold(bool hold);
    Mode mode() const { return m_mode; }
    void setMode(Mode mode);
    const ISO& iso() const { return m_iso; }
    void setISO(const ISO& iso);
    const Aperture& aperture() const { return m_aperture; }
    void setAperture(const Aperture& aperture);
    const ShutterSpeed& speed() const { return m_speed; }
    void setSpeed(const ShutterSpeed& speed);
    const Compensation& compensation() const { return m_compensation; }
    void setCompensation(const Compensation& compensation);
    const Compensation& manualExposure() const { return m_manualExposure; }
    std::optional<ExposureError> exposureError() const { return m_exposureError; }
    /// The camera's latest light value (ISO 100, stops); none before the first reading.
    std::optional<double> lightValue() const { return m_lightValue; }

    /// What the controls offer: apertures and speeds within the profile's limits, ISO
    /// speeds within its limits, and the compensation scale of its ISO step.
    std::vector<Aperture> possibleApertures() const;
    std::vector<ShutterSpeed> possibleSpeeds() const;
    std::vector<ISO> possibleISOs() const;
    std::vector<Compensation> possibleCompensations() const;

    /// Re-reads mode, ISO, aperture and speed from the profile, re-snaps the
    /// compensation to the profile's ISO step, and works the mode's outcome out again
    /// from the last light value.
    void reload();

    /// A one-line diagnostic read-out: light value, EV and the mode's outcome.
    QString debugDescription() const;
    /// How many throttled outcomes of the current mode have been applied so far.
    qint64 appliedOutcomes() const { return m_appliedOutcomes; }

signals:
    void holdChanged();
    void modeChanged();
    void isoChanged();
    void apertureChanged();
    void speedChanged();
    void compensationChanged();
    void manualExposureChanged();
    void exposureErrorChanged();
    void lightValueChanged();

private:
    void lightValueArrived(double lightValue);
    void exposureInputsChanged();
    void runShutterPriority();
    void runAperturePriority();
    void runManual();
    void applyShutterPriority(const ExposureResult<Aperture>& outcome);
    void applyAperturePriority(const ExposureResult<ShutterSpeed>& outcome);
    void applyManual(const ExposureResult<Compensation>& outcome);
    void setExposureError(std::optional<ExposureError> error);
    void scheduleReload();
    void measureAndReschedule();
    template <typename Write> void persist(Write write);

    const Calculator& m_calculator;
    AnyCameraController& m_camera;
    QPointer<ProfileSettings> m_settings;
    QMetaObject::Connection m_settingsConnection;
    Clock& m_clock;

    bool m_hold = false;
    ISO m_iso;
    Aperture m_aperture;
    ShutterSpeed m_speed;
    Compensation m_compensation{Fraction::full, 0.0, QStringLiteral("0")};
    Compensation m_manualExposure{Fraction::full, 0.0, QStringLiteral("0")};
    Mode m_mode = Mode::av;
    std::optional<ExposureError> m_exposureError;

    std::optional<double> m_lightValue;
    std::optional<double> m_exposureValue;
    LatestThrottle<ExposureResult<Aperture>> m_shutterPriority;
    LatestThrottle<ExposureResult<ShutterSpeed>> m_aperturePriority;
    std::optional<ExposureResult<Aperture>> m_latestShutterPriority;
    std::optional<ExposureResult<ShutterSpeed>> m_latestAperturePriority;
    std::optional<ExposureResult<Compensation>> m_lastManual;
    qint64 m_appliedOutcomes = 0;
    bool m_reloadQueued = false;
    bool m_persisting = false;
};

} // namespace kestrum
