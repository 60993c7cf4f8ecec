#pragma once

#include "cameraframe.h"

#include <QImage>

namespace kestrum {

/// A camera frame made ready for face analysis: grey (`QImage::Format_Grayscale8`),
/// scaled down (by area averaging) so that its longer side is at most `longSidePx`, same
/// aspect ratio, turned upright by `orientation` (face models know upright faces only), and
/// owning its pixels (the frame may be reused once this returns). A null frame gives a
/// null image. Cheap enough for the thread that delivers frames.
QImage faceAnalysisImage(const QImage& frame, CameraFrame::Orientation orientation, int longSidePx);

} // namespace kestrum
