#pragma once

#include <QRect>

namespace kestrum {

/// Where a tracker found its face in one frame, and how sure it is.
struct FaceTrackingResult {
    /// In pixels of the analysed (grey, scaled-down) frame.
    QRect box;
    /// 0…1; the tracker's match score for this frame.
    float confidence = 0.0f;
};

} // namespace kestrum
