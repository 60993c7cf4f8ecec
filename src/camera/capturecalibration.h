#pragma once

#include <QString>

namespace kestrum {

class PreferenceStore;

/// The per-camera corrections the user can set: the lens's f-number, for cameras that do
/// not report it, an offset in stops added to every exposure target offset, for cameras
/// whose metering reads too bright or too dark, and how far the sensor is mounted off
/// upright, for cameras that do not say (0° for a webcam, 90° for most phone sensors).
///
/// Kept in the preference store under "camera.<id>.aperture", "camera.<id>.calibration"
/// and "camera.<id>.rotation"; the fallbacks (f/2.0, 0 EV, 0°) are registered, never
/// written.
/// Values are read on every call, so a change in the settings takes effect at the next
/// measurement.
class CaptureCalibration {
public:
    static constexpr double kDefaultAperture = 2.0;
    static constexpr double kDefaultOffsetEV = 0.0;
    static constexpr double kDefaultRotation = 0.0;

    CaptureCalibration(PreferenceStore& store, const QString& deviceId);

    static QString apertureKey(const QString& deviceId);
    static QString offsetKey(const QString& deviceId);
    static QString rotationKey(const QString& deviceId);

    QString deviceId() const { return m_deviceId; }

    double aperture() const;
    double offsetEV() const;
    /// Degrees clockwise, as stored; CameraFrame rounds it to a quarter turn.
    double rotation() const;

    /// Stores the lens's f-number; false, storing nothing, unless it is a positive number.
    bool setAperture(double fNumber);
    /// Stores the offset; false, storing nothing, unless it is a number.
    bool setOffsetEV(double offsetEV);

private:
    PreferenceStore* m_store;
    QString m_deviceId;
};

} // namespace kestrum
