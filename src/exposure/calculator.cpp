#include "calculator.h"

#include "exposure/lightvalue.h"

#include "exposure/scale.h"
#include "exposure/shortestdecimaltext.h"
#include "settings/profilesettings.h"

#include <QtGlobal>

#include <cmath>

namespace kestrum {

namespace {
constexpr double kLowestManualDeviation = -2.0; // still shown
constexpr double kHighestManualDeviation = 2.0; // already overexposed
} // namespace

Calculator::Calculator(SettingsSource settings)
    : m_settings(std::move(settings))
{}

ProfileSettings* Calculator::settings() const
{
    return m_settings ? m_settings() : nullptr;
}

ProfileSettings& Calculator::requireSettings() const
{
    ProfileSettings* current = settings();
    if (!current)
        qFatal("the calculator was asked for a scale before a profile was set");
    return *current;
}

std::vector<Aperture> Calculator::possibleApertures() const
{
    const ProfileSettings& profile = requireSettings();
    return cutScale<Aperture>(scale<Aperture>(profile.fractionForAperture()),
                              profile.minimumAperture().value, profile.maximumAperture().value);
}

std::vector<ShutterSpeed> Calculator::possibleSpeeds() const
{
    const ProfileSettings& profile = requireSettings();
    return cutScale<ShutterSpeed>(scale<ShutterSpeed>(profile.fractionForSpeed()),
                                  profile.minimumSpeed().value, profile.maximumSpeed().value);
}

ExposureResult<Aperture> Calculator::calculateAperture(double exposureValue, double timeS) const
{
    const double fNumber = std::sqrt(std::exp2(exposureValue) * timeS);
    const std::vector<Aperture> apertures = possibleApertures();
    // Written so that NaN fails the first test: not within the smallest opening.
    if (!(fNumber <= apertures.back().value))
        return ExposureError::overexposed;
    if (fNumber < apertures.front().value)
        return ExposureError::underexposed;
    return nearestEntry<Aperture>(apertures, fNumber);
}

ExposureResult<ShutterSpeed> Calculator::calculateSpeed(double exposureValue, double fNumber) const
{
    const double timeS = fNumber * fNumber / std::exp2(exposureValue);
    const std::vector<ShutterSpeed> speeds = possibleSpeeds();
    // Written so that NaN fails the first test: not within the fastest speed.
    if (!(timeS >= speeds.back().value))
        return ExposureError::overexposed;
    if (timeS > speeds.front().value)
        return ExposureError::underexposed;
    return nearestEntry<ShutterSpeed>(speeds, timeS);
}

double Calculator::exposureValue(double lightValue, double iso, double compensation)
{
    return std::log2(iso / kLightValueReferenceISO) + lightValue - compensation;
}

double Calculator::settingsLightValue(double fNumber, double timeS, double iso, double compensation)
{
    return lightValue(fNumber, timeS, iso, compensation);
}

ExposureResult<Compensation> Calculator::manualDeviation(double lightValue,
                                                         double settingsLightValue)
{
    const double deviation = lightValue - settingsLightValue;
    if (deviation < kLowestManualDeviation)
        return ExposureError::underexposed;
    if (deviation >= kHighestManualDeviation)
        return ExposureError::overexposed;
    return Compensation{Fraction::full, deviation, shortestDecimalText(deviation)};
}

} // namespace kestrum
