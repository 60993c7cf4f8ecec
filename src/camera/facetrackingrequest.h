#pragma once

#include "platform/camera/faceanalyser.h"

#include <QImage>
#include <QRect>

namespace kestrum {

/// One face being followed from frame to frame: its last trusted position and the
/// picture of it that the tracker looks for in the next frame.
///
/// A request starts from a detected face. Each analysed frame gives it one tracking
/// result, which it takes by the confidence rule (`take`): a confident result becomes its
/// new input; a weak one marks it last-frame, so that it is tracked once more and then
/// dropped. Boxes and patches are in the analysed (grey, scaled-down) frame.
class FaceTrackingRequest {
public:
    /// A result must be strictly above this to become the request's new input.
    static constexpr float kMinimumConfidence = 0.3f;
    /// A face fresh from detection is trusted fully.
    static constexpr float kDetectedConfidence = 1.0f;

    enum class Fate { keep, drop };

    /// A request for the face at `box` in `frame`; `id` names it within its detector.
    FaceTrackingRequest(quint64 id, const QRect& box, const QImage& frame);

    quint64 id() const { return m_id; }
    /// The last box trusted as the face's position: where the next search is centred.
    QRect box() const { return m_box; }
    /// The frame's content at `box` when it was last trusted.
    QImage patch() const { return m_patch; }
    /// The face as it was detected; a tracker compares against it so that slow drift
    /// away from the face, or a cut to another scene, loses confidence.
    QImage detectedPatch() const { return m_detectedPatch; }
    /// The confidence of the last result taken as input.
    float confidence() const { return m_confidence; }
    bool isLastFrame() const { return m_lastFrame; }
    /// What the tracker looks for in the next frame.
    FaceTrackingTarget target() const { return {m_id, m_box, m_patch, m_detectedPatch}; }

    /// Takes this frame's result. A request already marked last-frame is dropped.
    /// Otherwise a result above `kMinimumConfidence` becomes its new input (box, patch cut
    /// from `frame`, confidence); one at or below marks it last-frame. Either way it is kept.
    Fate take(const FaceTrackingResult& result, const QImage& frame);

private:
    quint64 m_id;
    QRect m_box;
    QImage m_patch;
    QImage m_detectedPatch;
    float m_confidence = kDetectedConfidence;
    bool m_lastFrame = false;
};

} // namespace kestrum
