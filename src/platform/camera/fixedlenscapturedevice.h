#pragma once

#include "capturedevice.h"

namespace kestrum {

class CaptureFrameQueue;

/// A camera with one fixed lens that does no metering of its own: a webcam, or recorded
/// footage. It cannot zoom, has no point of interest and reports no exposure target
/// offset; whatever of that the app needs is worked out from its frames by the camera
/// subsystem.
///
/// Subclasses push the frames of their source into `frames()`, which decodes them on a
/// worker thread and emits `frameArrived` back on this object's thread.
class FixedLensCaptureDevice : public CaptureDevice {
    Q_OBJECT

public:
    Kind kind() const override { return Kind::wideAngle; }
    QList<float> switchOverZoomFactors() const override { return {}; }
    float minZoomFactor() const override { return 1.0f; }
    float maxZoomFactor() const override { return 1.0f; }
    void setZoomFactor(float) override {}
    void rampToZoomFactor(float, float) override {}
    bool isExposurePointOfInterestSupported() const override { return false; }
    bool isExposureModeSupported(ExposureMode mode) const override;
    void setExposurePointOfInterest(QPointF) override {}
    void setExposureMode(ExposureMode) override {}
    void setSubjectAreaChangeMonitoringEnabled(bool) override {}
    std::optional<float> exposureTargetOffsetEV() const override { return std::nullopt; }

protected:
    explicit FixedLensCaptureDevice(QObject* parent);

    CaptureFrameQueue& frames() const { return *m_frames; }

private:
    CaptureFrameQueue* m_frames;
};

} // namespace kestrum
