#include "capturecalibration.h"

#include "platform/store/preferencestore.h"

#include <cmath>

namespace kestrum {

CaptureCalibration::CaptureCalibration(PreferenceStore& store, const QString& deviceId)
    : m_store(&store)
    , m_deviceId(deviceId)
{
    store.registerDefaults({{apertureKey(deviceId), kDefaultAperture},
                            {offsetKey(deviceId), kDefaultOffsetEV},
                            {rotationKey(deviceId), kDefaultRotation}});
}

QString CaptureCalibration::apertureKey(const QString& deviceId)
{
    return QStringLiteral("camera.%1.aperture").arg(deviceId);
}

QString CaptureCalibration::offsetKey(const QString& deviceId)
{
    return QStringLiteral("camera.%1.calibration").arg(deviceId);
}

QString CaptureCalibration::rotationKey(const QString& deviceId)
{
    return QStringLiteral("camera.%1.rotation").arg(deviceId);
}

double CaptureCalibration::aperture() const
{
    return m_store->doubleValue(apertureKey(m_deviceId));
}

double CaptureCalibration::offsetEV() const
{
    return m_store->doubleValue(offsetKey(m_deviceId));
}

double CaptureCalibration::rotation() const
{
    return m_store->doubleValue(rotationKey(m_deviceId));
}

bool CaptureCalibration::setAperture(double fNumber)
{
    if (!std::isfinite(fNumber) || fNumber <= 0.0)
        return false;
    m_store->setDouble(apertureKey(m_deviceId), fNumber);
    return true;
}

bool CaptureCalibration::setOffsetEV(double offsetEV)
{
    if (!std::isfinite(offsetEV))
        return false;
    m_store->setDouble(offsetKey(m_deviceId), offsetEV);
    return true;
}

} // namespace kestrum
