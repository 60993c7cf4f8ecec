// Times the face detector on the film clip that scripts/bootstrap extracts, with frames
// scaled to 640 × 480 and to 1280 × 720, and prints medians:
// - detection: one cascade pass over a whole analysed frame, on the worker;
// - tracking update: the worker's whole job for one tracked frame (every request
//   tracked, the rule applied, each kept face fitted);
// - per-frame call: what `FaceDetector::process` costs the main thread when it hands a
//   frame to the worker (grey copy, scaling down, hand-off).
// Targets: detection under 40 ms, tracking update under 5 ms.
//
// Run: build/bench/bench_facedetector

#include "camera/facedetector.h"
#include "platform/camera/faceanalyseropencv.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>

using namespace kestrum;

namespace {

constexpr const char* kClip = KESTRUM_FOOTAGE_DIR "/Megamind.avi";
// Every fourth frame of the clip is timed for detection.
constexpr int kDetectionStride = 4;

std::vector<QImage> readClip(QSize size)
{
    cv::VideoCapture capture(kClip);
    std::vector<QImage> frames;
    cv::Mat frame;
    while (capture.read(frame)) {
        // Cameras hand over 32-bit frames; scale to the camera size being measured.
        frames.push_back(
            QImage(frame.data, frame.cols, frame.rows, qsizetype(frame.step), QImage::Format_BGR888)
                .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                .convertToFormat(QImage::Format_RGB32));
    }
    return frames;
}

double median(std::vector<double> values)
{
    if (values.empty()) {
        return 0.0;
    }
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double msSince(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

CameraFrame frameAt(const QImage& image, int index)
{
    return CameraFrame{image, std::chrono::milliseconds(42 * index)};
}

void measure(QSize size)
{
    const std::vector<QImage> clip = readClip(size);
    if (clip.empty()) {
        std::printf("cannot read %s (run scripts/bootstrap)\n", kClip);
        return;
    }

    auto analyser = std::make_shared<FaceAnalyserOpenCv>();
    std::vector<double> detectionMs;
    int framesWithFaces = 0;
    for (size_t i = 0; i < clip.size(); i += kDetectionStride) {
        const QImage analysed = analyser->analysisImage(clip[i], CameraFrame::Orientation::up,
                                                        FaceDetector::kAnalysisLongSidePx);
        QElapsedTimer timer;
        timer.start();
        const QList<QRect> faces = analyser->detectFaces(analysed);
        detectionMs.push_back(msSince(timer));
        framesWithFaces += faces.isEmpty() ? 0 : 1;
    }

    // The worker's jobs, timed by an executor that runs each at once.
    std::vector<double> trackingMs;
    FaceDetector* timed = nullptr;
    FaceDetector detector(analyser, [&](std::function<void()> work) {
        const bool tracking = !timed->trackingRequests().isEmpty();
        QElapsedTimer timer;
        timer.start();
        work();
        if (tracking) {
            trackingMs.push_back(msSince(timer));
        }
    });
    timed = &detector;
    detector.setIsActive(true);
    for (size_t i = 0; i < clip.size(); ++i) {
        detector.process(frameAt(clip[i], int(i)));
    }

    // The main thread's share, with the detector's own worker: each frame is handed
    // over once the previous one is back, so that every call does the full hand-off.
    std::vector<double> callMs;
    FaceDetector live(analyser);
    live.setIsActive(true);
    for (size_t i = 0; i < clip.size(); ++i) {
        QEventLoop loop;
        QObject::connect(&live, &FaceDetector::frameAnalysed, &loop, &QEventLoop::quit);
        QElapsedTimer timer;
        timer.start();
        live.process(frameAt(clip[i], int(i)));
        callMs.push_back(msSince(timer));
        loop.exec();
    }

    std::printf("%4d x %-4d  detection %6.2f ms (%zu, %d with faces)  tracking update %5.2f ms "
                "(%zu)  per-frame call %5.3f ms (%zu)\n",
                size.width(), size.height(), median(detectionMs), detectionMs.size(),
                framesWithFaces, median(trackingMs), trackingMs.size(), median(callMs),
                callMs.size());
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // OpenCV spreads a cascade pass over its own threads.
    std::printf("medians (samples) on %s, %d OpenCV threads\n", kClip, cv::getNumThreads());
    measure(QSize(640, 480));
    measure(QSize(1280, 720));
    return 0;
}
