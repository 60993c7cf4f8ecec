#pragma once

#include "cameraframe.h"
#include "facetrackingresult.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QString>

#include <optional>
#include <stdexcept>

namespace kestrum {

enum class FaceAnalyserError {
    /// The face model could not be loaded.
    modelMissing,
    /// The frame could not be handed to the analysis (empty, or not grey): nothing ran.
    frameRejected,
    /// The analysis ran and the image library reported an error.
    analysisFailed,
};

/// A failure of a `FaceAnalyser`, carrying the library's own message.
class FaceAnalyserException : public std::runtime_error {
public:
    FaceAnalyserException(FaceAnalyserError error, const QString& message)
        : std::runtime_error(message.toStdString())
        , m_error(error)
    {}
    FaceAnalyserError error() const { return m_error; }

private:
    FaceAnalyserError m_error;
};

/// What a tracker follows: which face, its last trusted box, the picture of it there, and
/// the picture of it as first detected. Boxes and pictures are in the analysed frame.
struct FaceTrackingTarget {
    quint64 id = 0;
    QRect box;
    QImage patch;
    QImage detectedPatch;
};

/// The image work behind the face detector: preparing a frame for analysis, finding
/// faces, following one into the next frame, and fitting a followed box to the face
/// inside it. Analysed frames are what `analysisImage` made of a camera frame; boxes are
/// in their pixels.
///
/// The detector calls one analyser from its worker thread, one call at a time; an
/// analyser need not be safe for concurrent calls. Failures throw `FaceAnalyserException`.
class FaceAnalyser {
public:
    virtual ~FaceAnalyser() = default;

    /// `frame` made ready for analysis: grey (`QImage::Format_Grayscale8`), scaled down so
    /// that its longer side is at most `longSidePx` (same aspect ratio), turned upright by
    /// `orientation`, and owning its pixels. A null frame gives a null image. Cheap enough
    /// for the thread that delivers frames, and safe to call from it while another call
    /// runs on the worker.
    virtual QImage analysisImage(const QImage& frame, CameraFrame::Orientation orientation,
                                 int longSidePx) const = 0;

    /// Every frontal face in the frame.
    virtual QList<QRect> detectFaces(const QImage& frame) = 0;

    /// Where the target's face is in this frame, searched near its last box; nothing
    /// when the tracker cannot run on this frame at all.
    virtual std::optional<FaceTrackingResult> track(const QImage& frame,
                                                    const FaceTrackingTarget& target) = 0;

    /// A box fitted to the face within and around a tracked box; the tracked box itself
    /// when no better fit is found.
    virtual QRect refine(const QImage& frame, const QRect& trackedBox) = 0;

protected:
    FaceAnalyser() = default;
    FaceAnalyser(const FaceAnalyser&) = default;
    FaceAnalyser& operator=(const FaceAnalyser&) = default;
};

} // namespace kestrum
