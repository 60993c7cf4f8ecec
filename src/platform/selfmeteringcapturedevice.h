#pragma once

#include "capturecalibration.h"
#include "capturedevice.h"
#include "exposuretarget.h"

#include <optional>

class QVariantAnimation;

namespace kestrum {

class CaptureFrameQueue;
class PreferenceStore;

/// A camera with one fixed lens that reports no metering of its own — a webcam, or
/// recorded footage — so that what the camera controller asks of it is worked out here,
/// from its frames and from the camera's calibration:
///
/// - the exposure target offset is measured on each frame (centre-weighted, or a spot at
///   the point of interest after a one-shot expose), plus the calibration offset; a large
///   change of the frame's brightness while monitoring is a subject-area change;
/// - zoom (1× to kMaxZoomFactor) crops the middle of every frame, so that metering, faces
///   and logged photos all see what a zoomed lens would; a ramp moves there smoothly;
/// - frames are marked with the sensor's rotation from the calibration.
///
/// Subclasses push their frames into `frames()` and call `useCalibration` once they know
/// which camera they are.
class SelfMeteringCaptureDevice : public CaptureDevice {
    Q_OBJECT

public:
    static constexpr float kMaxZoomFactor = 10.0f;

    Kind kind() const override { return Kind::wideAngle; }
    QList<float> switchOverZoomFactors() const override { return {}; }
    float minZoomFactor() const override { return 1.0f; }
    float maxZoomFactor() const override { return kMaxZoomFactor; }
    void setZoomFactor(float factor) override;
    void rampToZoomFactor(float factor, float rate) override;
    /// The zoom of the frames pushed from now on.
    float zoomFactor() const;

    bool isExposurePointOfInterestSupported() const override { return true; }
    bool isExposureModeSupported(ExposureMode) const override { return true; }
    void setExposurePointOfInterest(QPointF point) override;
    void setExposureMode(ExposureMode mode) override;
    void setSubjectAreaChangeMonitoringEnabled(bool enabled) override;
    std::optional<float> exposureTargetOffsetEV() const override;

protected:
    SelfMeteringCaptureDevice(PreferenceStore& preferences, QObject* parent);

    CaptureFrameQueue& frames() const { return *m_frames; }
    /// Reads the corrections of the camera `id` from now on.
    void useCalibration(const QString& id);
    /// The calibrated f-number, or f/2.0 before `useCalibration`.
    float calibratedAperture() const;

private:
    void takeFrame(const CameraFrame& frame, double frameLuminance);

    PreferenceStore& m_preferences;
    std::optional<CaptureCalibration> m_calibration;
    CaptureFrameQueue* m_frames;
    QVariantAnimation* m_zoomRamp;
    ExposureTarget m_target;
};

} // namespace kestrum
