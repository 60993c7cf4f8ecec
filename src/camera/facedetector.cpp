#include "facedetector.h"

#include "facetrackingpass.h"

#include <QFuture>
#include <QLoggingCategory>
#include <QPromise>

#include <chrono>
#include <exception>

namespace kestrum {

namespace {

Q_LOGGING_CATEGORY(lcFaces, "kestrum.camera.faces")

// How a stage's failure is told: `refused` when the work could not be started on the
// frame, `failed` when it ran and the analysis reported an error.
struct FailureTexts {
    const char* refused;
    const char* failed;
};

// Runs `work` on behalf of the worker and logs any failure; the pipeline drops failed
// work instead of stopping.
template <typename Work> bool attempt(FailureTexts texts, Work work)
{
    try {
        work();
        return true;
    } catch (const FaceAnalyserException& e) {
        const bool ran = e.error() == FaceAnalyserError::analysisFailed;
        qCWarning(lcFaces, ran ? texts.failed : texts.refused, e.what());
    } catch (const std::exception& e) {
        qCWarning(lcFaces, texts.refused, e.what());
    } catch (...) {
        qCWarning(lcFaces, texts.refused, "unknown error");
    }
    return false;
}

constexpr FailureTexts kDetectionFailure{"Failed to perform FaceRectangleRequest: %s",
                                         "FaceDetection error: %s."};
// Following a face has no separate completion: every failure is one of performing it.
constexpr FailureTexts kTrackingFailure{"Failed to perform SequenceRequest: %s",
                                        "Failed to perform SequenceRequest: %s"};
constexpr FailureTexts kFittingFailure{"Failed to perform FaceLandmarkRequest: %s",
                                       "FaceLandmarks error: %s."};

} // namespace

/// What the worker made of one tracked frame.
struct FaceDetector::TrackingOutcome {
    /// Absent when a request had no result: the frame is abandoned.
    std::optional<FaceTrackingPass> pass;
    /// The fitted faces of the kept requests, in order.
    QList<FaceObservation> observations;
};

FaceDetector::FaceDetector(std::shared_ptr<FaceAnalyser> analyser, QObject* parent)
    : FaceDetector(std::move(analyser), Executor{}, parent)
{}

FaceDetector::FaceDetector(std::shared_ptr<FaceAnalyser> analyser, Executor executor,
                           QObject* parent)
    : QObject(parent)
    , m_analyser(std::move(analyser))
    , m_executor(std::move(executor))
{
    Q_ASSERT(m_analyser);
    // One worker: the analyser is used by one thread at a time, and frames are skipped
    // rather than queued.
    m_worker.setMaxThreadCount(1);
    if (!m_executor) {
        m_executor = [worker = &m_worker](std::function<void()> work) {
            worker->start(std::move(work));
        };
    }
    prepare();
}

FaceDetector::~FaceDetector()
{
    // Work in flight finishes while this object still exists; its results are dropped.
    m_worker.waitForDone();
}

void FaceDetector::setIsActive(bool active)
{
    if (m_isActive == active) {
        return;
    }
    m_isActive = active;
    emit isActiveChanged();
}

void FaceDetector::prepare()
{
    m_trackingRequests.clear();
    m_collectingList.clear();
}

void FaceDetector::process(const CameraFrame& frame)
{
    if (!m_isActive || !frame.presentationTime) {
        return;
    }
    // Only frames on even milliseconds are analysed: this halves the work.
    const qint64 ms =
        std::chrono::duration_cast<std::chrono::milliseconds>(*frame.presentationTime).count();
    if (ms % 2 != 0) {
        return;
    }
    if (!m_imageSize && !frame.image.isNull()) {
        m_imageSize = QSize(frame.image.height(), frame.image.width());
    }
    if (frame.image.isNull()) {
        qCWarning(lcFaces, "Failed to obtain a CVPixelBuffer for the current output frame.");
        return;
    }
    if (m_workInFlight) {
        ++m_counters.framesSkippedWhileBusy;
        return;
    }

    const QImage analysed =
        m_analyser->analysisImage(frame.image, frame.orientation, kAnalysisLongSidePx);
    if (analysed.size() != m_analysisSize) {
        // Boxes of another frame size mean nothing here: start afresh.
        prepare();
        m_analysisSize = analysed.size();
    }
    if (m_trackingRequests.isEmpty()) {
        detect(analysed);
    } else {
        track(analysed);
    }
}

void FaceDetector::detect(const QImage& frame)
{
    ++m_counters.detectionPasses;
    m_workInFlight = true;

    using Faces = std::optional<QList<QRect>>;
    auto promise = std::make_shared<QPromise<Faces>>();
    promise->future().then(this, [this, frame](const Faces& faces) {
        m_workInFlight = false;
        finishDetection(frame, faces);
    });
    m_executor([promise, analyser = m_analyser, frame] {
        promise->start();
        Faces faces;
        attempt(kDetectionFailure, [&] { faces = analyser->detectFaces(frame); });
        promise->addResult(faces);
        promise->finish();
    });
}

void FaceDetector::finishDetection(const QImage& frame, const std::optional<QList<QRect>>& faces)
{
    if (faces) {
        for (const QRect& box : *faces) {
            m_collectingList.append(
                FaceTrackingRequest(quint64(m_collectingList.size()), box, frame));
        }
        // The whole collecting list, including requests dropped earlier: they are marked
        // last-frame and leave again on the next analysed frame.
        m_trackingRequests = m_collectingList;
    }
    emit frameAnalysed();
}

void FaceDetector::track(const QImage& frame)
{
    ++m_counters.trackingPasses;
    m_workInFlight = true;

    auto promise = std::make_shared<QPromise<TrackingOutcome>>();
    promise->future().then(this, [this](const TrackingOutcome& outcome) {
        m_workInFlight = false;
        finishTracking(outcome);
    });
    m_executor([promise, analyser = m_analyser, frame, tracked = m_trackingRequests] {
        promise->start();
        QList<std::optional<FaceTrackingResult>> results;
        results.reserve(tracked.size());
        attempt(kTrackingFailure, [&] {
            for (const FaceTrackingRequest& request : tracked) {
                results.append(analyser->track(frame, request.target()));
            }
        });
        // Requests the failure left without a result abandon the frame, as a lost track does.
        results.resize(tracked.size());

        TrackingOutcome outcome;
        outcome.pass = FaceTrackingPass::advance(tracked, results, frame);
        if (outcome.pass) {
            const bool fitted = attempt(kFittingFailure, [&] {
                for (const FaceTrackingResult& result : outcome.pass->results) {
                    outcome.observations.append(FaceObservation::fromFrameRect(
                        analyser->refine(frame, result.box), frame.size(), result.confidence));
                }
            });
            if (!fitted) {
                outcome.observations.clear();
            }
        }
        promise->addResult(outcome);
        promise->finish();
    });
}

void FaceDetector::finishTracking(const TrackingOutcome& outcome)
{
    if (outcome.pass) {
        // The collecting list holds the same requests: keep it up to date, so that a
        // request coming back with a later detection is in the state it was left in.
        for (const FaceTrackingRequest& request : outcome.pass->requests) {
            m_collectingList[qsizetype(request.id())] = request;
        }
        m_trackingRequests = outcome.pass->requests;
        if (m_isActive) {
            for (const FaceObservation& observation : outcome.observations) {
                emit faceObserved(observation);
            }
        }
    }
    emit frameAnalysed();
}

} // namespace kestrum
