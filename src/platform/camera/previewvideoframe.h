#pragma once

#include "cameraframe.h"

#include <QVideoFrame>

namespace kestrum {

/// A camera frame as Qt Multimedia shows it in a VideoOutput: the same pixels, copied
/// into a video frame of the image's format (or 32-bit RGB where Qt Multimedia has no
/// matching format), marked to be turned upright by the frame's orientation. A null
/// image gives an invalid frame, which clears the output.
QVideoFrame previewVideoFrame(const CameraFrame& frame);

} // namespace kestrum
