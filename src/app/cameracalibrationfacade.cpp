#include "cameracalibrationfacade.h"

#include "app/qmlsingleton.h"
#include "camera/calibrationsteps.h"
#include "camera/capturecalibration.h"
#include "camera/selfmeteringcamera.h"

namespace kestrum {

CameraCalibrationFacade::CameraCalibrationFacade(SelfMeteringCamera* camera, QObject* parent)
    : QObject(parent)
    , m_camera(camera)
{
    if (m_camera) {
        connect(m_camera, &SelfMeteringCamera::calibrationChanged, this,
                &CameraCalibrationFacade::changed);
    }
}

CameraCalibrationFacade* CameraCalibrationFacade::create(QQmlEngine*, QJSEngine*)
{
    return offeredSingleton(s_instance, "CameraCalibration");
}

bool CameraCalibrationFacade::available() const
{
    return m_camera && m_camera->calibration();
}

QString CameraCalibrationFacade::cameraId() const
{
    return available() ? m_camera->calibration()->deviceId() : QString();
}

bool CameraCalibrationFacade::reportsAperture() const
{
    return available() && m_camera->reportsAperture();
}

double CameraCalibrationFacade::lensAperture() const
{
    return available() ? m_camera->calibration()->aperture() : CaptureCalibration::kDefaultAperture;
}

void CameraCalibrationFacade::setLensAperture(double fNumber)
{
    if (available() && fNumber != lensAperture() && m_camera->calibration()->setAperture(fNumber))
        emit changed();
}

int CameraCalibrationFacade::calibrationIndex() const
{
    return CalibrationSteps::rowOf(available() ? m_camera->calibration()->offsetEV()
                                               : CaptureCalibration::kDefaultOffsetEV);
}

void CameraCalibrationFacade::setCalibrationIndex(int row)
{
    if (!available() || row < 0 || row >= calibrationCount() || row == calibrationIndex())
        return;
    m_camera->calibration()->setOffsetEV(CalibrationSteps::offsetEV(row));
    emit changed();
}

int CameraCalibrationFacade::calibrationCount()
{
    return CalibrationSteps::kCount;
}

QString CameraCalibrationFacade::calibrationText() const
{
    return CalibrationSteps::text(calibrationIndex());
}

QString CameraCalibrationFacade::calibrationTextAt(int row) const
{
    return CalibrationSteps::text(row);
}

} // namespace kestrum
