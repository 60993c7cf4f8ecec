#include "calculationcontroller.h"

#include "camera/anycameracontroller.h"
#include "exposure/scale.h"
#include "platform/time/clock.h"
#include "settings/profilesettings.h"

#include <QLocale>

namespace kestrum {

namespace {

template <typename C> C snapped(const std::vector<C>& scale, double value)
{
    return nearestEntry<C>(scale, value);
}

// The end of the full-stop table on the side that ran out of light or of range.
template <typename C> C fallback(ExposureError error, bool overexposedIsLast)
{
    const auto& table = ValueTables<C>::full();
    const bool last = (error == ExposureError::overexposed) == overexposedIsLast;
    return last ? table.back() : table.front();
}

} // namespace

CalculationController::CalculationController(const Calculator& calculator,
                                             AnyCameraController& camera, ProfileSettings* settings,
                                             Clock& clock, QObject* parent)
    : QObject(parent)
    , m_calculator(calculator)
    , m_camera(camera)
    , m_clock(clock)
    , m_shutterPriority(clock, kThrottleIntervalMs, this,
                        [this](const ExposureResult<Aperture>& outcome) {
                            m_latestShutterPriority = outcome;
                            if (m_mode == Mode::tv)
                                applyShutterPriority(outcome);
                        })
    , m_aperturePriority(clock, kThrottleIntervalMs, this,
                         [this](const ExposureResult<ShutterSpeed>& outcome) {
                             m_latestAperturePriority = outcome;
                             if (m_mode == Mode::av)
                                 applyAperturePriority(outcome);
                         })
{
    setSettings(settings);
    m_camera.lv().subscribe(this, [this](double lightValue) { lightValueArrived(lightValue); });
    m_clock.callAfter(kMeasuringIntervalMs, this, [this] { measureAndReschedule(); });
}

ProfileSettings* CalculationController::settings() const
{
    return m_settings;
}

void CalculationController::setSettings(ProfileSettings* settings)
{
    disconnect(m_settingsConnection);
    m_settings = settings;
    if (settings) {
        m_settingsConnection = connect(settings, &ProfileSettings::objectWillChange, this,
                                       &CalculationController::scheduleReload);
    }
    reload();
}

void CalculationController::reload()
{
    if (!m_settings)
        return;
    ProfileSettings& profile = *m_settings;
    setMode(profile.mode());
    setISO(snapped(possibleISOs(), profile.iso().value));
    setCompensation(snapped(possibleCompensations(), m_compensation.value));
    setAperture(snapped(possibleApertures(), profile.aperture().value));
    setSpeed(snapped(possibleSpeeds(), profile.speed().value));
    // The setters above recompute only what they changed, but new limits or steps can
    // change the outcome of unchanged inputs; a steady scene sends no further reading.
    m_lastManual.reset();
    exposureInputsChanged();
}

void CalculationController::scheduleReload()
{
    // Our own write-backs need no reload; every other change of the profile does,
    // once its writes are done.
    if (m_persisting || m_reloadQueued)
        return;
    m_reloadQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_reloadQueued = false;
            reload();
        },
        Qt::QueuedConnection);
}

template <typename Write> void CalculationController::persist(Write write)
{
    if (!m_settings)
        return;
    m_persisting = true;
    write(*m_settings);
    m_persisting = false;
}

std::vector<Aperture> CalculationController::possibleApertures() const
{
    return m_calculator.possibleApertures();
}

std::vector<ShutterSpeed> CalculationController::possibleSpeeds() const
{
    return m_calculator.possibleSpeeds();
}

std::vector<ISO> CalculationController::possibleISOs() const
{
    if (!m_settings)
        return scale<ISO>(Fraction::full);
    return cutScale<ISO>(scale<ISO>(m_settings->fractionForISO()), m_settings->minimumISO().value,
                         m_settings->maximumISO().value);
}

std::vector<Compensation> CalculationController::possibleCompensations() const
{
    // Compensation has no step of its own: it follows the ISO step.
    return scale<Compensation>(m_settings ? m_settings->fractionForISO() : Fraction::full);
}

void CalculationController::setHold(bool hold)
{
    if (hold == m_hold)
        return;
    m_hold = hold;
    emit holdChanged();
}

void CalculationController::setMode(Mode mode)
{
    if (mode == m_mode)
        return;
    m_mode = mode;
    persist([mode](ProfileSettings& p) { p.setMode(mode); });
    emit modeChanged();
    // The latest outcome of the new mode applies at once.
    if (m_mode == Mode::tv && m_latestShutterPriority)
        applyShutterPriority(*m_latestShutterPriority);
    if (m_mode == Mode::av && m_latestAperturePriority)
        applyAperturePriority(*m_latestAperturePriority);
    m_lastManual.reset();
    runManual();
}

void CalculationController::setISO(const ISO& iso)
{
    if (iso == m_iso)
        return;
    m_iso = iso;
    persist([iso](ProfileSettings& p) { p.setISO(iso); });
    emit isoChanged();
    exposureInputsChanged();
}

void CalculationController::setAperture(const Aperture& aperture)
{
    if (aperture == m_aperture)
        return;
    m_aperture = aperture;
    persist([aperture](ProfileSettings& p) { p.setAperture(aperture); });
    emit apertureChanged();
    runAperturePriority();
    runManual();
}

void CalculationController::setSpeed(const ShutterSpeed& speed)
{
    if (speed == m_speed)
        return;
    m_speed = speed;
    persist([speed](ProfileSettings& p) { p.setSpeed(speed); });
    emit speedChanged();
    runShutterPriority();
    runManual();
}

void CalculationController::setCompensation(const Compensation& compensation)
{
    if (compensation == m_compensation)
        return;
    m_compensation = compensation;
    emit compensationChanged();
    exposureInputsChanged();
}

void CalculationController::lightValueArrived(double lightValue)
{
    const bool changed = m_lightValue != lightValue;
    m_lightValue = lightValue;
    if (changed)
        emit lightValueChanged();
    exposureInputsChanged();
}

void CalculationController::exposureInputsChanged()
{
    if (!m_lightValue)
        return;
    m_exposureValue = Calculator::exposureValue(*m_lightValue, m_iso.value, m_compensation.value);
    runShutterPriority();
    runAperturePriority();
    runManual();
}

void CalculationController::runShutterPriority()
{
    if (m_exposureValue && m_settings)
        m_shutterPriority.push(m_calculator.calculateAperture(*m_exposureValue, m_speed.value));
}

void CalculationController::runAperturePriority()
{
    if (m_exposureValue && m_settings)
        m_aperturePriority.push(m_calculator.calculateSpeed(*m_exposureValue, m_aperture.value));
}

void CalculationController::runManual()
{
    if (m_mode != Mode::m || !m_lightValue)
        return;
    const double settingsLightValue = Calculator::settingsLightValue(
        m_aperture.value, m_speed.value, m_iso.value, m_compensation.value);
    const auto outcome = Calculator::manualDeviation(*m_lightValue, settingsLightValue);
    if (m_lastManual == outcome)
        return;
    m_lastManual = outcome;
    applyManual(outcome);
}

void CalculationController::applyShutterPriority(const ExposureResult<Aperture>& outcome)
{
    ++m_appliedOutcomes;
    if (outcome.hasEntry() && m_settings) {
        setExposureError(std::nullopt);
        setAperture(
            snapped(scale<Aperture>(m_settings->fractionForAperture()), outcome.entry().value));
    } else if (!outcome.hasEntry()) {
        setExposureError(outcome.error());
        setAperture(fallback<Aperture>(outcome.error(), true));
    }
}

void CalculationController::applyAperturePriority(const ExposureResult<ShutterSpeed>& outcome)
{
    ++m_appliedOutcomes;
    if (outcome.hasEntry() && m_settings) {
        setExposureError(std::nullopt);
        setSpeed(
            snapped(scale<ShutterSpeed>(m_settings->fractionForSpeed()), outcome.entry().value));
    } else if (!outcome.hasEntry()) {
        setExposureError(outcome.error());
        // Speeds run from the longest time: the fastest is the last entry.
        setSpeed(fallback<ShutterSpeed>(outcome.error(), true));
    }
}

void CalculationController::applyManual(const ExposureResult<Compensation>& outcome)
{
    if (outcome.hasEntry()) {
        setExposureError(std::nullopt);
        m_manualExposure = snapped(possibleCompensations(), outcome.entry().value);
    } else {
        setExposureError(outcome.error());
        m_manualExposure = fallback<Compensation>(outcome.error(), true);
    }
    emit manualExposureChanged();
}

void CalculationController::setExposureError(std::optional<ExposureError> error)
{
    if (error == m_exposureError)
        return;
    m_exposureError = error;
    emit exposureErrorChanged();
}

void CalculationController::measureAndReschedule()
{
    m_clock.callAfter(kMeasuringIntervalMs, this, [this] { measureAndReschedule(); });
    if (!m_hold)
        m_camera.measure();
}

QString CalculationController::debugDescription() const
{
    const QLocale locale = QLocale::c();
    const auto number = [&locale](std::optional<double> value) {
        return value ? locale.toString(*value, 'f', 2) : QStringLiteral("–");
    };
    return QStringLiteral("LV %1 · EV %2 · %3 %4 · %5")
        .arg(number(m_lightValue), number(m_exposureValue), rawValue(m_mode),
             m_mode == Mode::tv   ? m_aperture.display
             : m_mode == Mode::av ? m_speed.display
                                  : m_manualExposure.display,
             m_exposureError ? rawValue(*m_exposureError) : QStringLiteral("ok"));
}

} // namespace kestrum
