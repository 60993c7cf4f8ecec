#include "facetrackingrequest.h"

namespace kestrum {

FaceTrackingRequest::FaceTrackingRequest(quint64 id, const QRect& box, const QImage& frame)
    : m_id(id)
    , m_box(box)
    , m_patch(frame.copy(box))
    , m_detectedPatch(m_patch)
{}

FaceTrackingRequest::Fate FaceTrackingRequest::take(const FaceTrackingResult& result,
                                                    const QImage& frame)
{
    if (m_lastFrame) {
        return Fate::drop;
    }
    if (result.confidence > kMinimumConfidence) {
        m_box = result.box;
        m_patch = frame.copy(result.box);
        m_confidence = result.confidence;
    } else {
        m_lastFrame = true;
    }
    return Fate::keep;
}

} // namespace kestrum
