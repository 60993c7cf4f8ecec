#pragma once

#include "exposure/exposurecomponent.h"
#include "exposure/exposureresult.h"

#include <functional>
#include <vector>

namespace kestrum {

class ProfileSettings;

/// The exposure arithmetic of the meter.
///
/// Turns a light value and the photographer's choices into the missing aperture or
/// shutter speed, snapped to the scales of the current profile's steps and cut to
/// its limits, and reports when no entry can expose correctly. Snapping uses the
/// linear distance in f-number or seconds, never stops, and prefers the earlier
/// entry of a tie. Nothing is cached: every call reads the current profile afresh.
///
/// Quantities: LV is the light value at ISO 100; EV the exposure value for the ISO
/// and compensation in use (N²/t = 2^EV); N an f-number; t seconds.
class Calculator {
public:
    /// Answers the current profile's settings, or null when there is none yet.
    using SettingsSource = std::function<ProfileSettings*()>;

    explicit Calculator(SettingsSource settings);

    /// The current profile's settings, read at each access; may be null.
    ProfileSettings* settings() const;

    /// The aperture scale of the profile's step, cut to its minimum and maximum.
    std::vector<Aperture> possibleApertures() const;
    /// The speed scale of the profile's step, cut from its minimum (slowest) to its
    /// maximum (fastest).
    std::vector<ShutterSpeed> possibleSpeeds() const;

    /// Shutter priority: the aperture for EV at `timeS` seconds. A NaN result fails
    /// as overexposed.
    ExposureResult<Aperture> calculateAperture(double exposureValue, double timeS) const;
    /// Aperture priority: the speed for EV at f-number `fNumber`. A NaN result fails
    /// as overexposed.
    ExposureResult<ShutterSpeed> calculateSpeed(double exposureValue, double fNumber) const;

    /// EV = log2(ISO / 100) + LV − compensation: a positive compensation asks for
    /// more light.
    static double exposureValue(double lightValue, double iso, double compensation);
    /// The LV at which the given settings expose exactly right; the inverse of
    /// `exposureValue`.
    static double settingsLightValue(double fNumber, double timeS, double iso, double compensation);
    /// Manual mode: how far the scene is from the settings, in stops, as a full-step
    /// compensation with the shortest decimal text. Accepted from −2 (included) to
    /// +2 (excluded); a NaN difference passes as it is.
    static ExposureResult<Compensation> manualDeviation(double lightValue,
                                                        double settingsLightValue);

private:
    ProfileSettings& requireSettings() const;

    SettingsSource m_settings;
};

} // namespace kestrum
