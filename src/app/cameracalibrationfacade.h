#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class SelfMeteringCamera;

/// The calibration of the camera in use, for the settings' Camera section
/// (`CameraCalibration`): the lens's f-number, for a camera that does not report it, and
/// the offset added to every reading, in thirds of a stop from −3 to +3 EV (see
/// CalibrationSteps), as a stepper's row.
///
/// Only a live camera that was found has a calibration: on the mock camera, and before
/// the camera is set up, `available` is false and writes change nothing. Each value is
/// stored under the camera's own id (CaptureCalibration) and read by the camera at the
/// next reading.
class CameraCalibrationFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(CameraCalibration)
    QML_SINGLETON
    Q_PROPERTY(bool available READ available NOTIFY changed)
    /// "file" for footage, the webcam's name in lower case joined by '-'; empty when
    /// not available.
    Q_PROPERTY(QString cameraId READ cameraId NOTIFY changed)
    /// Whether the camera reports its f-number, so that `lensAperture` is not asked for.
    Q_PROPERTY(bool reportsAperture READ reportsAperture NOTIFY changed)
    /// The stored f-number (2.0 until one is stored); non-positive writes are refused.
    Q_PROPERTY(double lensAperture READ lensAperture WRITE setLensAperture NOTIFY changed)
    /// The row of the stored offset, 0 (−3 EV) to `calibrationCount` − 1 (+3 EV).
    Q_PROPERTY(int calibrationIndex READ calibrationIndex WRITE setCalibrationIndex NOTIFY changed)
    Q_PROPERTY(int calibrationCount READ calibrationCount CONSTANT)
    /// The text of that row, "+⅓ EV".
    Q_PROPERTY(QString calibrationText READ calibrationText NOTIFY changed)

public:
    /// `camera` is the live camera, null on the mock camera; it must outlive the facade.
    explicit CameraCalibrationFacade(SelfMeteringCamera* camera, QObject* parent = nullptr);

    static CameraCalibrationFacade* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(CameraCalibrationFacade* instance) { s_instance = instance; }

    bool available() const;
    QString cameraId() const;
    bool reportsAperture() const;
    double lensAperture() const;
    void setLensAperture(double fNumber);
    int calibrationIndex() const;
    void setCalibrationIndex(int row);
    static int calibrationCount();
    QString calibrationText() const;

    /// The text of any row, for a stepper that shows its neighbours.
    Q_INVOKABLE QString calibrationTextAt(int row) const;

signals:
    void changed();

private:
    static inline CameraCalibrationFacade* s_instance = nullptr;

    SelfMeteringCamera* m_camera;
};

} // namespace kestrum
