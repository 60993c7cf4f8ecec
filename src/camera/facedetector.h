#pragma once

#include "faceobservation.h"
#include "facetrackingrequest.h"
#include "platform/camera/cameraframe.h"
#include "platform/camera/faceanalyser.h"

#include <QList>
#include <QObject>
#include <QSize>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <optional>

namespace kestrum {

/// Finds faces in the live camera frames and follows them from frame to frame, so that
/// the preview can outline a face and meter on it.
///
/// The camera hands it every frame (`process`). While `isActive`, it analyses only frames
/// whose time stamp falls on an even millisecond (roughly every other frame). With nothing
/// tracked, an analysed frame is searched for faces, and each face found becomes a
/// tracking request. From then on frames are tracked instead, which is far cheaper: each
/// request follows its face into the frame, the box is fitted to the face, and the face
/// is reported through `faceObserved`. A request whose confidence falls to 0.3 or below is
/// reported once more and then dropped; when none is left, the next analysed frame
/// detects afresh. Every request ever made is also kept in a collecting list that is
/// never emptied, and each detection makes that whole list the tracked one again; the
/// old requests, already marked last-frame, drop out on the following frame.
///
/// Frames are analysed turned upright by their orientation, and the observed boxes are in
/// that upright frame.
///
/// Threads: everything here is called on the main thread, and `process` returns at once.
/// It makes a small grey copy of the frame and hands the image work to a worker; the
/// results come back to the main thread, which alone changes the tracking state and
/// emits. One frame at most is with the worker: frames that pass the gate while it is
/// busy are skipped, so the main thread never waits and the detector analyses as many
/// frames as the worker keeps up with. Results that arrive while inactive update the
/// tracking but are not reported.
class FaceDetector : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isActive READ isActive WRITE setIsActive NOTIFY isActiveChanged)

public:
    /// Runs one piece of image work, on whatever thread it chooses; the detector's own
    /// executor is a single worker thread. An injected executor must have run all work it
    /// was given before the detector is destroyed.
    using Executor = std::function<void(std::function<void()> work)>;

    /// What the detector has done so far, for diagnostics and tests.
    struct Counters {
        int detectionPasses = 0;
        int trackingPasses = 0;
        /// Frames that passed the gate while the worker was still busy.
        int framesSkippedWhileBusy = 0;
    };

    /// The longer side of a frame as the face analysis sees it. Detection cost grows with
    /// the pixel count, so frames are scaled down to this before any face work; faces
    /// smaller than about a sixteenth of the frame's longer side are then out of reach.
    static constexpr int kAnalysisLongSidePx = 320;

    /// A detector working on its own worker thread.
    explicit FaceDetector(std::shared_ptr<FaceAnalyser> analyser, QObject* parent = nullptr);
    FaceDetector(std::shared_ptr<FaceAnalyser> analyser, Executor executor,
                 QObject* parent = nullptr);
    ~FaceDetector() override;

    bool isActive() const { return m_isActive; }
    void setIsActive(bool active);

    /// Takes one camera frame; main thread only; returns at once.
    void process(const CameraFrame& frame);

    /// The analysed frames' size in the app's portrait orientation: width = the frame's
    /// pixel height, height = its pixel width. Unknown until the first frame that passes
    /// the gate, then fixed.
    std::optional<QSize> imageSize() const { return m_imageSize; }

    /// The requests the next analysed frame tracks; empty while detecting.
    QList<FaceTrackingRequest> trackingRequests() const { return m_trackingRequests; }

    Counters counters() const { return m_counters; }

signals:
    void isActiveChanged();
    /// One face, in the order found, for every tracked face of every analysed frame.
    void faceObserved(const kestrum::FaceObservation& observation);
    /// The worker's results for one analysed frame have been taken in (detection or
    /// tracking, successful or not).
    void frameAnalysed();

private:
    struct TrackingOutcome;

    void prepare();
    void detect(const QImage& frame);
    void track(const QImage& frame);
    void finishDetection(const QImage& frame, const std::optional<QList<QRect>>& faces);
    void finishTracking(const TrackingOutcome& outcome);

    std::shared_ptr<FaceAnalyser> m_analyser;
    QThreadPool m_worker;
    Executor m_executor;

    bool m_isActive = false;
    bool m_workInFlight = false;
    std::optional<QSize> m_imageSize;
    /// The analysed frames' size that the requests' boxes refer to.
    QSize m_analysisSize;
    QList<FaceTrackingRequest> m_trackingRequests;
    /// Every request made since the preparation; a request's id is its index here.
    QList<FaceTrackingRequest> m_collectingList;
    Counters m_counters;
};

} // namespace kestrum
