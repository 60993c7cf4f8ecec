#pragma once

#include "facetrackingrequest.h"
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

/// The image work behind the face detector: finding faces, following one into the next
/// frame, and fitting a followed box to the face inside it. Frames are grey
/// (`QImage::Format_Grayscale8`) and already scaled down for analysis; boxes are in
/// their pixels.
///
/// The detector calls one analyser from its worker thread, one call at a time; an
/// analyser need not be safe for concurrent calls. Failures throw `FaceAnalyserException`.
class FaceAnalyser {
public:
    virtual ~FaceAnalyser() = default;

    /// Every frontal face in the frame.
    virtual QList<QRect> detectFaces(const QImage& frame) = 0;

    /// Where the request's face is in this frame, searched near its last box; nothing
    /// when the tracker cannot run on this frame at all.
    virtual std::optional<FaceTrackingResult> track(const QImage& frame,
                                                    const FaceTrackingRequest& request) = 0;

    /// A box fitted to the face within and around a tracked box; the tracked box itself
    /// when no better fit is found.
    virtual QRect refine(const QImage& frame, const QRect& trackedBox) = 0;

protected:
    FaceAnalyser() = default;
    FaceAnalyser(const FaceAnalyser&) = default;
    FaceAnalyser& operator=(const FaceAnalyser&) = default;
};

} // namespace kestrum
