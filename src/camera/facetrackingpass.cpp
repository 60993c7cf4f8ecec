#include "facetrackingpass.h"

namespace kestrum {

std::optional<FaceTrackingPass>
FaceTrackingPass::advance(const QList<FaceTrackingRequest>& tracked,
                          const QList<std::optional<FaceTrackingResult>>& results,
                          const QImage& frame)
{
    Q_ASSERT(tracked.size() == results.size());
    FaceTrackingPass pass;
    for (qsizetype i = 0; i < tracked.size(); ++i) {
        if (!results[i]) {
            return std::nullopt;
        }
        FaceTrackingRequest request = tracked[i];
        if (request.take(*results[i], frame) == FaceTrackingRequest::Fate::keep) {
            pass.requests.append(request);
            pass.results.append(*results[i]);
        }
    }
    return pass;
}

} // namespace kestrum
