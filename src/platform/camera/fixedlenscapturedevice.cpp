#include "fixedlenscapturedevice.h"

#include "captureframequeue.h"

namespace kestrum {

FixedLensCaptureDevice::FixedLensCaptureDevice(QObject* parent)
    : CaptureDevice(parent)
    , m_frames(new CaptureFrameQueue(this))
{
    connect(m_frames, &CaptureFrameQueue::frameReady, this, &CaptureDevice::frameArrived);
}

bool FixedLensCaptureDevice::isExposureModeSupported(ExposureMode mode) const
{
    // The exposure follows the scene by itself; nothing can be locked or set by hand.
    return mode == ExposureMode::continuousAutoExposure;
}

} // namespace kestrum
