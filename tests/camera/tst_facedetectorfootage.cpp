// The OpenCV face detector on real footage: a film clip with a moving face, and a photograph.
#include "camera/facedetector.h"
#include "platform/camera/faceanalyseropencv.h"
#include "platform/camera/faceanalysisimage.h"

#include <QPainter>
#include <QTest>
#include <QTransform>

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>

#include <chrono>
#include <cmath>

using namespace kestrum;
using namespace std::chrono_literals;

namespace {

const QString kFootage = QStringLiteral(KESTRUM_FOOTAGE_DIR);

const FaceDetector::Executor kRunAtOnce = [](std::function<void()> work) { work(); };

// The clip's last shot, a close-up of one face that moves and turns.
constexpr int kCloseUpFirst = 200;

QList<QImage> readClip(const QString& path)
{
    cv::VideoCapture capture(path.toStdString());
    QList<QImage> frames;
    cv::Mat frame;
    while (capture.read(frame)) {
        frames.append(
            QImage(frame.data, frame.cols, frame.rows, qsizetype(frame.step), QImage::Format_BGR888)
                .copy());
    }
    return frames;
}

// Frames about 24 per second, each on an even millisecond so that all are analysed.
CameraFrame frameAt(const QImage& image, int index)
{
    return CameraFrame{image, std::chrono::milliseconds(42 * index)};
}

double overlap(const QRectF& a, const QRectF& b)
{
    const QRectF common = a.intersected(b);
    const double shared = common.width() * common.height();
    return shared / (a.width() * a.height() + b.width() * b.height() - shared);
}

struct Run {
    std::shared_ptr<FaceAnalyserOpenCv> analyser = std::make_shared<FaceAnalyserOpenCv>();
    FaceDetector detector{analyser, kRunAtOnce};
    QList<FaceObservation> observations;
    int frameCount = 0;

    Run()
    {
        detector.setIsActive(true);
        QObject::connect(&detector, &FaceDetector::faceObserved,
                         [this](const FaceObservation& o) { observations.append(o); });
    }

    void feed(const QImage& image, CameraFrame::Orientation orientation = {})
    {
        CameraFrame frame = frameAt(image, frameCount++);
        frame.orientation = orientation;
        detector.process(frame);
    }
    void feed(const QList<QImage>& clip, int from, int to)
    {
        for (int i = from; i < to; ++i)
            feed(clip[i]);
    }
};

} // namespace

class FaceDetectorFootageTest : public QObject {
    Q_OBJECT

    QList<QImage> m_clip;
    QImage m_photo;

private slots:
    void initTestCase()
    {
        m_clip = readClip(kFootage + "/Megamind.avi");
        QCOMPARE(m_clip.size(), 270);
        QVERIFY(m_photo.load(kFootage + "/messi5.jpg"));
    }

    void photoHasAFace_data()
    {
        QTest::addColumn<int>("sensorTurnDegrees");
        QTest::addColumn<CameraFrame::Orientation>("orientation");
        QTest::newRow("sensor a quarter turn off") << -90 << CameraFrame::Orientation::right;
        QTest::newRow("sensor upside down") << 180 << CameraFrame::Orientation::down;
    }

    // Faces are found as they stand in the upright photo, whichever way the sensor lies.
    void photoHasAFace()
    {
        QFETCH(int, sensorTurnDegrees);
        QFETCH(CameraFrame::Orientation, orientation);
        const QImage sensor = m_photo.transformed(QTransform().rotate(sensorTurnDegrees));
        Run upright;
        upright.feed(m_photo);
        upright.feed(m_photo);
        Run run;
        run.feed(sensor, orientation);
        QVERIFY(!run.detector.trackingRequests().isEmpty());
        run.feed(sensor, orientation);
        QVERIFY(!run.observations.isEmpty());
        QCOMPARE(run.observations.size(), upright.observations.size());
        const QRectF unit(0, 0, 1, 1);
        for (qsizetype i = 0; i < run.observations.size(); ++i) {
            const FaceObservation& o = run.observations[i];
            QVERIFY(unit.contains(o.boundingBox));
            QVERIFY(o.confidence > 0.9f);
            QVERIFY(overlap(o.boundingBox, upright.observations[i].boundingBox) > 0.7);
        }
    }

    void faceIsFollowedByTrackingNotRedetection()
    {
        Run run;
        run.feed(m_clip, 0, int(m_clip.size()));
        const auto counters = run.detector.counters();
        QVERIFY(counters.detectionPasses <= 10);
        QVERIFY(counters.trackingPasses >= 250);
        QVERIFY(run.observations.size() >= 250);

        // Through the close-up, tracker and reported boxes stay on the face found anew each frame.
        FaceAnalyserOpenCv reference;
        int trackerOnFace = 0;
        int reportedOnFace = 0;
        int checked = 0;
        Run closeUp;
        for (int i = kCloseUpFirst; i < m_clip.size(); ++i) {
            const qsizetype before = closeUp.observations.size();
            closeUp.feed(m_clip[i]);
            const QImage analysed = faceAnalysisImage(m_clip[i], CameraFrame::Orientation::up,
                                                      FaceDetector::kAnalysisLongSidePx);
            const QList<QRect> faces = reference.detectFaces(analysed);
            if (closeUp.observations.size() == before + 1 && faces.size() == 1) {
                ++checked;
                const QRect tracked = closeUp.detector.trackingRequests().first().box();
                trackerOnFace += faces.first().contains(tracked.center()) ? 1 : 0;
                const QRectF box = closeUp.observations.last().frameRect(analysed.size());
                reportedOnFace += overlap(box, faces.first()) > 0.5 ? 1 : 0;
            }
        }
        QVERIFY(checked >= 40);
        QVERIFY2(trackerOnFace >= checked * 9 / 10, qPrintable(QString::number(trackerOnFace)));
        QVERIFY2(reportedOnFace >= checked * 9 / 10, qPrintable(QString::number(reportedOnFace)));
    }

    // A camera panning over a still: the face moves a known distance, the tracker with it.
    void trackerFollowsAPanningCamera()
    {
        const QImage still = m_clip[240];
        constexpr QSize kWindow(560, 420);
        constexpr QPoint kPanPerFramePx(5, 3);
        constexpr double kAnalysisScale =
            double(FaceDetector::kAnalysisLongSidePx) / kWindow.width();
        // Whole pixels, so the rounding of a sub-pixel pan, but no drift.
        constexpr double kToleratedErrorPx = 1.0;
        Run run;
        run.feed(still.copy(QRect(QPoint(), kWindow)));
        QCOMPARE(run.detector.trackingRequests().size(), 1);
        const QPointF start = QRectF(run.detector.trackingRequests().first().box()).center();

        for (int i = 1; i <= 30; ++i) {
            run.feed(still.copy(QRect(kPanPerFramePx * i, kWindow)));
            QCOMPARE(run.detector.trackingRequests().size(), 1);
            const QPointF expected = start - QPointF(kPanPerFramePx * i) * kAnalysisScale;
            const QPointF tracked = QRectF(run.detector.trackingRequests().first().box()).center();
            const QPointF error = tracked - expected;
            QVERIFY2(std::abs(error.x()) <= kToleratedErrorPx &&
                         std::abs(error.y()) <= kToleratedErrorPx,
                     qPrintable(QStringLiteral("frame %1").arg(i)));
        }
        QCOMPARE(run.detector.counters().detectionPasses, 1);
        QCOMPARE(run.observations.size(), 30);
    }

    void detectionResumesAfterTheFaceIsLost()
    {
        Run run;
        run.feed(m_clip, kCloseUpFirst, kCloseUpFirst + 10);
        QVERIFY(!run.detector.trackingRequests().isEmpty());
        const int detectionsWhileFollowing = run.detector.counters().detectionPasses;

        QImage blank(m_clip.first().size(), QImage::Format_RGB32);
        blank.fill(QColor(90, 90, 90));
        for (int i = 0;
             i < 4 && run.detector.counters().detectionPasses == detectionsWhileFollowing; ++i) {
            run.feed(blank);
        }
        QCOMPARE(run.detector.counters().detectionPasses, detectionsWhileFollowing + 1);

        const qsizetype observedBefore = run.observations.size();
        run.feed(m_clip, kCloseUpFirst + 10, kCloseUpFirst + 20);
        QVERIFY(run.detector.counters().detectionPasses > detectionsWhileFollowing + 1);
        QVERIFY(run.observations.size() - observedBefore >= 6);
    }

    // Two faces from different shots, side by side in one landscape frame.
    void twoFacesGiveTwoRequestsAndTwoObservations()
    {
        FaceAnalyserOpenCv analyser;
        const auto faceCrop = [&](const QImage& frame) {
            const QImage analysed = faceAnalysisImage(frame, CameraFrame::Orientation::up,
                                                      FaceDetector::kAnalysisLongSidePx);
            const QList<QRect> faces = analyser.detectFaces(analysed);
            const QRect face =
                *std::max_element(faces.begin(), faces.end(), [](const QRect& a, const QRect& b) {
                    return a.width() < b.width();
                });
            const double scale = double(frame.width()) / analysed.width();
            const QRect inFrame(int(face.x() * scale), int(face.y() * scale),
                                int(face.width() * scale), int(face.height() * scale));
            const int margin = inFrame.width() / 2;
            return frame.copy(inFrame.adjusted(-margin, -margin, margin, margin))
                .scaled(300, 300, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        };
        QImage composed(640, 480, QImage::Format_RGB32);
        composed.fill(Qt::black);
        {
            QPainter painter(&composed);
            painter.drawImage(10, 90, faceCrop(m_clip[40]));
            painter.drawImage(330, 90, faceCrop(m_clip[240]));
        }

        Run run;
        run.feed(composed);
        QCOMPARE(run.detector.trackingRequests().size(), 2);
        for (int i = 0; i < 3; ++i) {
            const qsizetype before = run.observations.size();
            run.feed(composed);
            QCOMPARE(run.observations.size() - before, 2);
        }
        // One face in each half of the frame.
        const QRectF a = run.observations[0].frameRect(composed.size());
        const QRectF b = run.observations[1].frameRect(composed.size());
        QVERIFY((a.center().x() < 320) != (b.center().x() < 320));
    }
};

QTEST_GUILESS_MAIN(FaceDetectorFootageTest)
#include "tst_facedetectorfootage.moc"
