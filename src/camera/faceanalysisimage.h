#pragma once

#include "cameraframe.h"

#include <QImage>

namespace kestrum {

/// The longer side of a frame as the face analysis sees it. Detection cost grows with
/// the pixel count, so frames are scaled down to this before any face work; faces
/// smaller than about a sixteenth of the frame's longer side are then out of reach.
inline constexpr int kFaceAnalysisLongSidePx = 320;

/// A camera frame made ready for face analysis: grey (`QImage::Format_Grayscale8`),
/// scaled down so that its longer side is at most `kFaceAnalysisLongSidePx`, same aspect
/// ratio, turned upright by `orientation` (face models know upright faces only), and
/// owning its pixels (the frame may be reused once this returns). A null frame gives a
/// null image. Cheap enough for the thread that delivers frames.
QImage faceAnalysisImage(const QImage& frame,
                         CameraFrame::Orientation orientation = CameraFrame::Orientation::up);

} // namespace kestrum
