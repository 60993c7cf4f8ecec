#include "camera/facedetector.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <chrono>
#include <deque>
#include <map>

using namespace kestrum;
using namespace std::chrono_literals;

namespace {

// Finds the faces it is told to and tracks each request with the confidences scripted for it
// (one per pass; the last repeats), moving its box 2 px right; fitting grows it 1 px each side.
// A failing stage throws; `secondLost` tracks no result for the request with id 1.
class ScriptedAnalyser final : public FaceAnalyser {
public:
    QList<QRect> faces;
    std::map<quint64, std::deque<float>> confidences;
    enum class Failure { none, detection, tracking, secondLost, refinement };
    Failure failure = Failure::none;
    FaceAnalyserError failureKind = FaceAnalyserError::analysisFailed;
    int detections = 0;

    QList<QRect> detectFaces(const QImage&) override
    {
        ++detections;
        failIf(Failure::detection);
        return faces;
    }
    // Grey, scaled down and turned upright with Qt's own means.
    QImage analysisImage(const QImage& frame, CameraFrame::Orientation orientation,
                         int longSidePx) const override
    {
        if (frame.isNull())
            return {};
        constexpr int kDegrees[] = {0, 90, 180, 270};
        QImage grey = frame.convertToFormat(QImage::Format_Grayscale8);
        if (std::max(grey.width(), grey.height()) > longSidePx)
            grey = grey.scaled(longSidePx, longSidePx, Qt::KeepAspectRatio);
        return grey.transformed(QTransform().rotate(kDegrees[int(orientation)]));
    }
    std::optional<FaceTrackingResult> track(const QImage&,
                                            const FaceTrackingTarget& request) override
    {
        failIf(Failure::tracking);
        if (failure == Failure::secondLost && request.id == 1)
            return std::nullopt;
        auto& script = confidences[request.id];
        const float confidence = script.empty() ? 0.9f : script.front();
        if (script.size() > 1)
            script.pop_front();
        return FaceTrackingResult{request.box.translated(2, 0), confidence};
    }
    QRect refine(const QImage&, const QRect& trackedBox) override
    {
        failIf(Failure::refinement);
        return trackedBox.adjusted(-1, -1, 1, 1);
    }

private:
    void failIf(Failure stage) const
    {
        if (failure == stage)
            throw FaceAnalyserException(failureKind, "boom");
    }
};

constexpr QSize kFrameSize(80, 60); // small frames stay full size: boxes are in frame pixels
const QRect kFace(10, 10, 20, 20);
const QRect kOtherFace(50, 30, 16, 16);

CameraFrame frameAt(std::optional<std::chrono::microseconds> time, QSize size = kFrameSize)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::gray);
    return CameraFrame{image, time};
}

// Analysed frames: each on an even millisecond.
CameraFrame frame(int index)
{
    return frameAt(std::chrono::milliseconds(2 * index));
}

// An active detector on a scripted analyser; by default its work runs at once on this thread.
struct Fixture {
    explicit Fixture(
        QList<QRect> faces = {},
        FaceDetector::Executor executor = [](std::function<void()> work) { work(); })
        : detector(analyser, std::move(executor))
    {
        analyser->faces = faces;
        detector.setIsActive(true);
    }
    void process(int first, int last)
    {
        for (int i = first; i <= last; ++i)
            detector.process(frame(i));
    }
    QList<FaceTrackingRequest> requests() const { return detector.trackingRequests(); }
    QList<FaceObservation> observations() const
    {
        QList<FaceObservation> result;
        for (const QList<QVariant>& arguments : observed)
            result.append(arguments.at(0).value<FaceObservation>());
        return result;
    }
    /// The observed boxes in frame pixels.
    QList<QRectF> boxes() const
    {
        QList<QRectF> result;
        for (const FaceObservation& observation : observations())
            result.append(observation.frameRect(kFrameSize));
        return result;
    }

    std::shared_ptr<ScriptedAnalyser> analyser = std::make_shared<ScriptedAnalyser>();
    FaceDetector detector;
    QSignalSpy observed{&detector, &FaceDetector::faceObserved};
};

} // namespace

class FaceDetectorTest : public QObject {
    Q_OBJECT

private slots:
    void gate_data()
    {
        QTest::addColumn<bool>("active");
        QTest::addColumn<std::optional<std::chrono::microseconds>>("time");
        QTest::addColumn<bool>("analysed");
        QTest::newRow("1.0005 s is 1000 ms: analysed") << true << std::optional(1000500us) << true;
        QTest::newRow("1.9999 s truncates to odd 1999 ms")
            << true << std::optional(1999900us) << false;
        QTest::newRow("zero is even") << true << std::optional(0us) << true;
        QTest::newRow("no time stamp")
            << true << std::optional<std::chrono::microseconds>() << false;
        QTest::newRow("inactive") << false << std::optional(1000500us) << false;
        QTest::newRow("no pixels: logged") << true << std::optional(2000us) << false;
    }

    void gate()
    {
        QFETCH(bool, active);
        QFETCH(std::optional<std::chrono::microseconds>, time);
        QFETCH(bool, analysed);
        Fixture f;
        f.detector.setIsActive(active);
        const bool noPixels = QTest::currentDataTag() == QLatin1String("no pixels: logged");
        if (noPixels)
            QTest::ignoreMessage(QtWarningMsg,
                                 "Failed to obtain a CVPixelBuffer for the current output frame.");
        f.detector.process(frameAt(time, noPixels ? QSize() : QSize(64, 48)));
        QCOMPARE(f.analyser->detections, analysed ? 1 : 0);
        QCOMPARE(f.detector.imageSize(), analysed ? std::optional(QSize(48, 64)) : std::nullopt);
    }

    void imageSizeIsFixedByTheFirstAnalysedFrame()
    {
        Fixture f;
        f.detector.process(frameAt(1ms, QSize(32, 24)));
        f.detector.process(frameAt(2ms, QSize(64, 48)));
        f.detector.process(frameAt(4ms, QSize(128, 96)));
        QCOMPARE(f.detector.imageSize(), std::optional(QSize(48, 64)));
    }

    void detectsThenTracksEachFace()
    {
        Fixture f({kFace, kOtherFace});
        f.process(1, 1);
        QCOMPARE(f.requests().size(), 2);
        QCOMPARE(f.observed.size(), 0);
        f.process(2, 3);
        QCOMPARE(f.analyser->detections, 1);
        QCOMPARE(f.detector.counters().trackingPasses, 2);
        // Tracked 2 px right, then fitted 1 px wider on each side.
        QCOMPARE(f.boxes(), (QList<QRectF>{QRectF(11, 9, 22, 22), QRectF(51, 29, 18, 18),
                                           QRectF(13, 9, 22, 22), QRectF(53, 29, 18, 18)}));
        QCOMPARE(f.observations().last().confidence, 0.9f);
        QCOMPARE(f.requests()[0].box(), QRect(14, 10, 20, 20));
    }

    // At exactly 0.3 a face is shown once more, then dropped; it returns with the next detection.
    void weakFaceLeavesAndDetectionResumes()
    {
        Fixture f({kFace});
        f.analyser->confidences[0] = {0.9f, 0.3f, 0.9f};
        f.process(1, 3); // detects, 0.9, then 0.3: marked, shown once more
        QCOMPARE(f.observed.size(), 2);
        QCOMPARE(f.observations().last().confidence, 0.3f);
        QVERIFY(f.requests()[0].isLastFrame());
        f.process(4, 4); // dropped
        QCOMPARE(f.observed.size(), 2);
        QVERIFY(f.requests().isEmpty());
        f.process(5, 5); // detects again
        QCOMPARE(f.analyser->detections, 2);
        QCOMPARE(f.requests().size(), 2);
        QVERIFY(f.requests()[0].isLastFrame());
        QVERIFY(!f.requests()[1].isLastFrame());
        f.process(6, 6);
        QCOMPARE(f.requests().size(), 1);
        QCOMPARE(f.requests()[0].id(), quint64(1));
        QCOMPARE(f.observed.size(), 3);
        QCOMPARE(f.detector.counters().detectionPasses, 2);
        QCOMPARE(f.detector.counters().trackingPasses, 4);
    }

    void failedStageIsLoggedAndDropped_data()
    {
        using Failure = ScriptedAnalyser::Failure;
        using enum FaceAnalyserError;
        QTest::addColumn<int>("failure");
        QTest::addColumn<FaceAnalyserError>("kind");
        QTest::addColumn<QString>("message"); // empty: nothing logged
        QTest::addColumn<int>("requestsAfter");
        QTest::addColumn<int>("boxXAfter"); // of the first request
        QTest::newRow("detection refused: the next frame detects")
            << int(Failure::detection) << frameRejected
            << "Failed to perform FaceRectangleRequest: boom" << 0 << 0;
        QTest::newRow("detection failed: the next frame detects")
            << int(Failure::detection) << analysisFailed << "FaceDetection error: boom." << 0 << 0;
        QTest::newRow("tracking keeps the list as it was")
            << int(Failure::tracking) << analysisFailed << "Failed to perform SequenceRequest: boom"
            << 2 << 10;
        QTest::newRow("one request without a result abandons the frame")
            << int(Failure::secondLost) << analysisFailed << QString() << 2 << 10;
        QTest::newRow("fitting refused still moves the requests")
            << int(Failure::refinement) << frameRejected
            << "Failed to perform FaceLandmarkRequest: boom" << 2 << 12;
        QTest::newRow("fitting failed still moves the requests")
            << int(Failure::refinement) << analysisFailed << "FaceLandmarks error: boom." << 2
            << 12;
    }

    // A failure costs its frame's observations only; the next frame goes on.
    void failedStageIsLoggedAndDropped()
    {
        QFETCH(int, failure);
        QFETCH(FaceAnalyserError, kind);
        QFETCH(QString, message);
        QFETCH(int, requestsAfter);
        QFETCH(int, boxXAfter);
        Fixture f({kFace, kOtherFace});
        const bool detection = failure == int(ScriptedAnalyser::Failure::detection);
        if (!detection)
            f.process(1, 1);
        f.analyser->failure = ScriptedAnalyser::Failure(failure);
        f.analyser->failureKind = kind;
        if (!message.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, message.toUtf8().constData());
        f.process(2, 2);
        QCOMPARE(f.observed.size(), 0);
        QCOMPARE(f.requests().size(), requestsAfter);
        if (requestsAfter > 0)
            QCOMPARE(f.requests()[0].box().x(), boxXAfter);
        f.analyser->failure = ScriptedAnalyser::Failure::none;
        f.process(3, 3);
        QCOMPARE(f.requests().size(), 2);
        QCOMPARE(f.observed.size(), detection ? 0 : 2);
    }

    void inactiveDetectorReportsNothingAndKeepsItsFaces()
    {
        Fixture f({kFace});
        f.process(1, 1);
        QSignalSpy activeChanged(&f.detector, &FaceDetector::isActiveChanged);
        f.detector.setIsActive(false);
        QCOMPARE(activeChanged.size(), 1);
        f.process(2, 5);
        QCOMPARE(f.observed.size(), 0);
        QCOMPARE(f.detector.counters().trackingPasses, 0);
        QCOMPARE(f.requests().size(), 1);
        f.detector.setIsActive(true);
        f.process(6, 6);
        QCOMPARE(f.observed.size(), 1);
    }

    // While the worker holds a frame, newer frames are skipped rather than queued.
    void framesArrivingWhileBusyAreSkipped()
    {
        std::vector<std::function<void()>> pending;
        Fixture f({kFace}, [&](std::function<void()> work) { pending.push_back(work); });
        f.process(1, 3);
        QCOMPARE(pending.size(), 1u);
        QCOMPARE(f.detector.counters().framesSkippedWhileBusy, 2);
        QVERIFY(f.requests().isEmpty());
        pending.front()();
        QCOMPARE(f.requests().size(), 1);
        f.process(4, 4);
        QCOMPARE(pending.size(), 2u);
        QCOMPARE(f.detector.counters().trackingPasses, 1);
    }

    void workerResultsArriveOnTheMainThread()
    {
        auto analyser = std::make_shared<ScriptedAnalyser>();
        analyser->faces = {kFace};
        FaceDetector detector(analyser);
        detector.setIsActive(true);
        QSignalSpy analysed(&detector, &FaceDetector::frameAnalysed);
        QThread* observedOn = nullptr;
        connect(&detector, &FaceDetector::faceObserved, this,
                [&] { observedOn = QThread::currentThread(); });
        detector.process(frame(1));
        QVERIFY(analysed.wait(10000));
        detector.process(frame(3));
        QVERIFY(analysed.wait(10000));
        QCOMPARE(observedOn, QThread::currentThread());
    }
};

QTEST_GUILESS_MAIN(FaceDetectorTest)
#include "tst_facedetector.moc"
