// Plays footage through the file camera into the live camera controller and reports, as
// medians over repeated runs:
// - per frame, the median, 95th-percentile and largest time the main thread spends in
//   the controller's frame delegate (target: under 2 ms), with a photo logged every
//   second so that the path that starts a capture is included (it shows in the largest);
// - the median time of one measure() (it meters the newest frame on the main thread);
// - frames delivered per second, and light values per second that pass `lv` when
//   measuring on every frame.
//
// Footage: synthetic 640×480 and 1280×720 Motion-JPEG clips with a moving bright patch
// and a slowly pulsing brightness, plus /usr/local/share/kestrum/footage/Megamind.avi
// when it is there.
//
// Run: build/bench/bench_cameracontroller [seconds per run, default 5]

#include "cameracontrollerfootage.h"

#include "album/photoalbum.h"
#include "camera/cameracontroller.h"
#include "camera/selfmeteringcamera.h"
#include "platform/camera/capturedevice.h"
#include "platform/camera/capturedevicechoice.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "support/fakephotolibrary.h"
#include "support/memorypreferencestore.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

using namespace kestrum;

namespace {

constexpr int kRepetitions = 3;
constexpr int kFramesPerSecond = 30;
constexpr int kClipFrames = 90;
constexpr int kDefaultSecondsPerRun = 5;
constexpr int kLogEveryFrames = kFramesPerSecond;
constexpr double kNsPerMs = 1e6;
constexpr auto kMegamind = "/usr/local/share/kestrum/footage/Megamind.avi";

struct Footage {
    QString name;
    QString path;
};

struct RunResult {
    double medianDelegateMs = 0;
    double p95DelegateMs = 0;
    double maxDelegateMs = 0;
    double medianMeasureMs = 0;
    double framesPerSecond = 0;
    double lightValuesPerSecond = 0;
};

double percentile(std::vector<double> values, double fraction)
{
    if (values.empty())
        return std::nan("");
    std::sort(values.begin(), values.end());
    const auto index = std::min(values.size() - 1, size_t(fraction * double(values.size())));
    return values[index];
}

double median(std::vector<double> values)
{
    return percentile(std::move(values), 0.5);
}

QImage syntheticFrame(QSize size, int index)
{
    QImage image(size, QImage::Format_RGB32);
    const double phase = 2 * M_PI * index / kClipFrames;
    const int base = int(90 + 60 * std::sin(phase)); // about 2.5 stops of pulsing
    image.fill(qRgb(base, base, base));
    QPainter painter(&image);
    const int patch = size.height() / 4;
    const int x = int((size.width() - patch) * (0.5 + 0.5 * std::cos(phase)));
    painter.fillRect(x, size.height() / 3, patch, patch, Qt::white);
    return image;
}

std::optional<Footage> synthetic(const QTemporaryDir& dir, QSize size)
{
    QList<QImage> frames;
    for (int i = 0; i < kClipFrames; ++i)
        frames.append(syntheticFrame(size, i));
    const QString name = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    const QString path = dir.filePath(name + ".avi");
    if (!bench::writeMotionJpegAvi(path, frames, kFramesPerSecond))
        return std::nullopt;
    QFile sidecar(path + ".json");
    if (!sidecar.open(QIODevice::WriteOnly))
        return std::nullopt;
    sidecar.write(R"({"iso": 100, "exposureDuration": 0.01, "aperture": 2.0})");
    return Footage{name, path};
}

RunResult run(const Footage& footage, int seconds)
{
    MemoryPreferenceStore preferences;
    FakePhotoLibrary library;
    Exiv2ImageMetadata metadata;
    PhotoAlbum album(library, metadata);
    auto device = std::make_unique<SelfMeteringCamera>(
        CaptureDeviceChoice::parse("file:" + footage.path).make(), preferences);
    CaptureDevice* camera = device.get();
    CameraController controller(
        std::move(device), [&album] { return &album; }, metadata, [](const CameraFrame&) {});

    // Slots run in the order they were connected: one before and one after the
    // controller's delegate bracket it.
    QElapsedTimer clock;
    clock.start();
    qint64 delegateStartNs = 0;
    std::vector<double> delegateMs;
    std::vector<double> measureMs;
    int frames = 0;
    int lightValues = -1; // the current value on subscribing is not a new one
    QObject context;
    QObject::connect(camera, &CaptureDevice::frameArrived, &context,
                     [&] { delegateStartNs = clock.nsecsElapsed(); });
    controller.setUp();
    QObject::connect(camera, &CaptureDevice::frameArrived, &context, [&] {
        delegateMs.push_back(double(clock.nsecsElapsed() - delegateStartNs) / kNsPerMs);
        if (++frames % kLogEveryFrames == 0)
            controller.logExposure();
        const qint64 before = clock.nsecsElapsed();
        controller.measure();
        measureMs.push_back(double(clock.nsecsElapsed() - before) / kNsPerMs);
    });
    controller.lv().subscribe(&context, [&lightValues](double) { ++lightValues; });

    QTimer::singleShot(seconds * 1000, qApp, &QCoreApplication::quit);
    QGuiApplication::exec();
    const double elapsedS = double(clock.nsecsElapsed()) / 1e9;
    const double maxMs =
        delegateMs.empty() ? std::nan("") : *std::max_element(delegateMs.begin(), delegateMs.end());
    return {median(delegateMs), percentile(delegateMs, 0.95),       maxMs, median(measureMs),
            frames / elapsedS,  std::max(lightValues, 0) / elapsedS};
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int seconds = argc > 1 ? std::max(1, atoi(argv[1])) : kDefaultSecondsPerRun;
    QTemporaryDir dir;
    // Logged photos go to the temporary directory; keep them in ours.
    qputenv("TMPDIR", dir.path().toLocal8Bit());

    std::vector<Footage> footage;
    for (QSize size : {QSize(640, 480), QSize(1280, 720)}) {
        if (const auto clip = synthetic(dir, size))
            footage.push_back(*clip);
        else
            std::fprintf(stderr, "could not write the %dx%d clip\n", size.width(), size.height());
    }
    if (QFile::exists(QLatin1String(kMegamind))) {
        QFile::copy(QLatin1String(kMegamind), dir.filePath("Megamind.avi"));
        QFile sidecar(dir.filePath("Megamind.avi.json"));
        if (sidecar.open(QIODevice::WriteOnly))
            sidecar.write(R"({"iso": 100, "exposureDuration": 0.01, "aperture": 2.0})");
        footage.push_back({QStringLiteral("Megamind.avi"), dir.filePath("Megamind.avi")});
    }

    std::printf("%-14s %14s %14s %14s %14s %10s %10s\n", "footage", "delegate p50", "delegate p95",
                "delegate max", "measure p50", "frames/s", "LV/s");
    for (const Footage& clip : footage) {
        std::vector<double> p50, p95, max, measure, fps, lvs;
        for (int i = 0; i < kRepetitions; ++i) {
            const RunResult result = run(clip, seconds);
            p50.push_back(result.medianDelegateMs);
            p95.push_back(result.p95DelegateMs);
            max.push_back(result.maxDelegateMs);
            measure.push_back(result.medianMeasureMs);
            fps.push_back(result.framesPerSecond);
            lvs.push_back(result.lightValuesPerSecond);
        }
        std::printf("%-14s %11.4f ms %11.4f ms %11.4f ms %11.4f ms %10.1f %10.1f\n",
                    qPrintable(clip.name), median(p50), median(p95), median(max), median(measure),
                    median(fps), median(lvs));
    }
    std::printf("medians of %d runs of %d s each\n", kRepetitions, seconds);
    return 0;
}
