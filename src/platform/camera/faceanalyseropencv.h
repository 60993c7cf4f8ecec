#pragma once

#include "faceanalyser.h"

#include <QString>

#include <memory>

namespace cv {
class CascadeClassifier;
}

namespace kestrum {

/// Face analysis on OpenCV, with the frontal-face cascade that Debian's opencv-data ships.
///
/// - Detection: the Haar cascade `frontalface_alt2` over the whole analysed frame, one
///   octave of face sizes at a time (`faceOctaveSearch`). It finds more faces than the LBP
///   cascades on frames scaled down to 320 pixels, whose windows (24 and 45 pixels) miss
///   the smallest faces there. Searched by octaves, a 320 × 240 frame without a face costs
///   about 11 ms of CPU time, against 20 ms for OpenCV's own search over every size.
/// - Tracking: normalised cross-correlation (`TM_CCOEFF_NORMED`) of the request's last
///   patch within a window around its last box, then of the face as first detected within
///   two pixels of the spot found, which keeps whole-pixel rounding from adding up to
///   drift. The confidence is the lower of the two matches, so that a face that turns
///   away, or a cut to another scene, loses confidence.
/// - Refinement (in place of face landmarks): the same cascade, run only in a margin
///   around the tracked box and only at sizes near it, re-fits the box to the face; the
///   tracked box stands when the cascade finds nothing there.
class FaceAnalyserOpenCv final : public FaceAnalyser {
public:
    static constexpr const char* kFrontalFaceCascadePath =
        "/usr/share/opencv4/haarcascades/haarcascade_frontalface_alt2.xml";

    /// Loads the cascade; throws `FaceAnalyserException` (`modelMissing`) when it cannot.
    explicit FaceAnalyserOpenCv(
        const QString& cascadePath = QString::fromLatin1(kFrontalFaceCascadePath));
    ~FaceAnalyserOpenCv() override;

    QImage analysisImage(const QImage& frame, CameraFrame::Orientation orientation,
                         int longSidePx) const override;
    QList<QRect> detectFaces(const QImage& frame) override;
    std::optional<FaceTrackingResult> track(const QImage& frame,
                                            const FaceTrackingTarget& target) override;
    QRect refine(const QImage& frame, const QRect& trackedBox) override;

private:
    std::unique_ptr<cv::CascadeClassifier> m_cascade;
};

} // namespace kestrum
