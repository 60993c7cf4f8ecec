// Times the face detector on the film clip that scripts/bootstrap extracts, with frames
// scaled to 640 × 480 and to 1280 × 720, and prints medians and 95th percentiles:
// - detection: one cascade pass over a whole analysed frame, on the worker, as elapsed
//   time and as CPU time of the whole process (OpenCV spreads a pass over its threads,
//   and CPU time is what the app pays for every frame it searches); once on the clip, and
//   once on the clip turned a quarter turn, where frontal-face models find no face: the
//   case in which every analysed frame is searched;
// - tracking update: the worker's whole job for one tracked frame (every request
//   tracked, the rule applied, each kept face fitted);
// - per-frame call: what `FaceDetector::process` costs the main thread when it hands a
//   frame to the worker (grey copy, scaling down, hand-off).
// Targets: detection under 12 ms of CPU time without a face (searched about twelve times
// a second, that keeps the app under a quarter of a core), tracking update under 5 ms.
//
// Run: build/bench/bench_facedetector

#include "camera/facedetector.h"
#include "platform/camera/faceanalyseropencv.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>

#include <time.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

using namespace kestrum;

namespace {

constexpr const char* kClip = KESTRUM_FOOTAGE_DIR "/Megamind.avi";
// Every fourth frame of the clip is timed for detection.
constexpr int kDetectionStride = 4;
constexpr double kMedian = 0.5;
constexpr double kHighPercentile = 0.95;
constexpr double kNsPerMs = 1e6;
constexpr double kMsPerS = 1e3;

// The clip's frames, turned a quarter turn clockwise when `quarterTurned`.
std::vector<QImage> readClip(QSize size, bool quarterTurned = false)
{
    cv::VideoCapture capture(kClip);
    std::vector<QImage> frames;
    cv::Mat frame;
    while (capture.read(frame)) {
        if (quarterTurned) {
            cv::rotate(frame, frame, cv::ROTATE_90_CLOCKWISE);
        }
        // Cameras hand over 32-bit frames; scale to the camera size being measured.
        frames.push_back(
            QImage(frame.data, frame.cols, frame.rows, qsizetype(frame.step), QImage::Format_BGR888)
                .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                .convertToFormat(QImage::Format_RGB32));
    }
    return frames;
}

// Nearest rank.
double percentile(std::vector<double> values, double fraction)
{
    if (values.empty()) {
        return 0.0;
    }
    std::sort(values.begin(), values.end());
    const auto rank = std::size_t(std::ceil(fraction * double(values.size())));
    return values[std::clamp<std::size_t>(rank, 1, values.size()) - 1];
}

double msSince(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / kNsPerMs;
}

// CPU time of all the process's threads so far.
double processCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * kMsPerS + double(now.tv_nsec) / kNsPerMs;
}

struct DetectionTimes {
    std::vector<double> wallMs;
    std::vector<double> cpuMs;
    int framesWithFaces = 0;
};

DetectionTimes timeDetection(FaceAnalyser& analyser, const std::vector<QImage>& clip)
{
    DetectionTimes times;
    for (size_t i = 0; i < clip.size(); i += kDetectionStride) {
        const QImage analysed = analyser.analysisImage(clip[i], CameraFrame::Orientation::up,
                                                       FaceDetector::kAnalysisLongSidePx);
        QElapsedTimer timer;
        timer.start();
        const double cpuBefore = processCpuMs();
        const QList<QRect> faces = analyser.detectFaces(analysed);
        times.cpuMs.push_back(processCpuMs() - cpuBefore);
        times.wallMs.push_back(msSince(timer));
        times.framesWithFaces += faces.isEmpty() ? 0 : 1;
    }
    return times;
}

void printDetection(const char* name, const DetectionTimes& times)
{
    std::printf("  detection %-9s elapsed median %6.2f p95 %6.2f ms, CPU median %6.2f p95 %6.2f ms "
                "(%zu frames, %d with faces)\n",
                name, percentile(times.wallMs, kMedian), percentile(times.wallMs, kHighPercentile),
                percentile(times.cpuMs, kMedian), percentile(times.cpuMs, kHighPercentile),
                times.wallMs.size(), times.framesWithFaces);
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
    const DetectionTimes withFace = timeDetection(*analyser, clip);
    const DetectionTimes withoutFace =
        timeDetection(*analyser, readClip(size, /*quarterTurned=*/true));

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

    std::printf("%d x %d\n", size.width(), size.height());
    printDetection("clip", withFace);
    printDetection("no face", withoutFace);
    std::printf("  tracking update   median %5.2f p95 %5.2f ms (%zu)\n",
                percentile(trackingMs, kMedian), percentile(trackingMs, kHighPercentile),
                trackingMs.size());
    std::printf("  per-frame call    median %5.3f p95 %5.3f ms (%zu)\n",
                percentile(callMs, kMedian), percentile(callMs, kHighPercentile), callMs.size());
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // OpenCV spreads a cascade pass over its own threads.
    std::printf("%s, %d OpenCV threads\n", kClip, cv::getNumThreads());
    measure(QSize(640, 480));
    measure(QSize(1280, 720));
    return 0;
}
