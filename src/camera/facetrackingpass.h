#pragma once

#include "facetrackingrequest.h"
#include "platform/camera/facetrackingresult.h"

#include <QImage>
#include <QList>

#include <optional>

namespace kestrum {

/// One analysed frame's worth of tracking: which requests go on, and the result each
/// of them had in this frame (the box the preview is shown).
struct FaceTrackingPass {
    /// The requests to track in the next analysed frame, in order, updated by this frame.
    QList<FaceTrackingRequest> requests;
    /// This frame's result for each of `requests`, same order.
    QList<FaceTrackingResult> results;

    /// Runs the tracked requests through this frame's results, in order (see
    /// `FaceTrackingRequest::take`). A request without a result abandons the whole
    /// frame: nothing is returned and the caller keeps its list as it was.
    /// `results` has one entry per request of `tracked`.
    static std::optional<FaceTrackingPass>
    advance(const QList<FaceTrackingRequest>& tracked,
            const QList<std::optional<FaceTrackingResult>>& results, const QImage& frame);
};

} // namespace kestrum
