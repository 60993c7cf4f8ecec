#pragma once

#include <QImage>

#include <chrono>
#include <optional>

namespace kestrum {

/// One video frame as the camera delivered it: landscape, in the sensor's
/// orientation. The image is implicitly shared, so passing a frame on is cheap.
struct CameraFrame {
    QImage image;
    /// When the frame was captured, on the capture clock; absent when the device
    /// gave no valid time stamp.
    std::optional<std::chrono::microseconds> presentationTime;
};

} // namespace kestrum
