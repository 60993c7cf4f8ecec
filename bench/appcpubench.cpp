// The app's CPU use while it meters footage, as a share of one core (user + system time
// of all its threads, from /proc/<pid>/stat). The built `kestrum` runs off screen on the
// file camera, on settings, pictures and data folders of its own, once on the film clip
// with a face and once on footage without one. After a warm-up of 3 s (start-up, first
// frames, caches) it is measured for 20 s, in one-second windows: printed are the whole
// measured time's share and the median and 95th percentile of the windows. Target: under
// 25 % of one core without a face. Faces are looked for only while the main screen sets
// `FaceDetector.active`; without that, both clips cost the same.
//
// The footage without a face is the same clip turned a quarter turn, written at start as
// a Motion JPEG file of the same pixel count and frame rate: the same pictures and
// movement, so the same decoding and metering work, but frontal-face models know upright
// faces only: the face detector searches every frame it analyses, finding a face-like
// pattern in no more than a handful of the clip's 270 frames. (Upside down is not enough:
// the clip's faces are then still found in a third of its frames.) Both clips get the
// same exposure sidecar, so both are metered alike.
//
// Run: build/bench/bench_appcpu [measured seconds, default 20]

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

constexpr const char* kClip = KESTRUM_FOOTAGE_DIR "/Megamind.avi";
constexpr int kDefaultMeasuredS = 20;
// Start-up, the first decoded frames and the first readings are not what this measures.
constexpr int kWarmUpS = 3;
constexpr int kWindowMs = 1000;
constexpr double kMsPerS = 1000.0;
constexpr double kPercent = 100.0;
constexpr double kMedian = 0.5;
constexpr double kHighPercentile = 0.95;
constexpr int kStopTimeoutMs = 10'000;
// A window below this share is one in which the app did nothing at all: not even the
// footage was decoded, so the figures are not those of metering.
constexpr double kIdlePercent = 1.0;
// Motion JPEG at high quality, so that the turned clip looks like the original.
constexpr int kJpegQuality = 90;
// The exposure both clips are metered with (an ordinary indoor scene).
constexpr auto kSidecar = R"({"iso": 100, "exposureDuration": 0.01, "aperture": 2.0})";

// The user and system time the process has used so far, in seconds; nothing once it is gone.
std::optional<double> cpuSecondsOf(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray line = stat.readAll();
    // The command name in brackets may hold spaces; fields are counted after it.
    const qsizetype nameEnd = line.lastIndexOf(')');
    if (nameEnd < 0)
        return std::nullopt;
    const QList<QByteArray> fields = line.mid(nameEnd + 2).split(' ');
    // utime and stime are fields 14 and 15 of the line, 12 and 13 after the name.
    constexpr int kUserTimeField = 11;
    constexpr int kSystemTimeField = 12;
    if (fields.size() <= kSystemTimeField)
        return std::nullopt;
    const double ticks = fields[kUserTimeField].toDouble() + fields[kSystemTimeField].toDouble();
    return ticks / double(sysconf(_SC_CLK_TCK));
}

// `clip` turned a quarter turn clockwise, frame by frame, into `path`; false when it
// cannot be read or written.
bool writeQuarterTurned(const QString& clip, const QString& path)
{
    cv::VideoCapture capture(clip.toStdString());
    if (!capture.isOpened())
        return false;
    // Width and height swap places.
    const cv::Size size(int(capture.get(cv::CAP_PROP_FRAME_HEIGHT)),
                        int(capture.get(cv::CAP_PROP_FRAME_WIDTH)));
    cv::VideoWriter writer(path.toStdString(), cv::CAP_OPENCV_MJPEG,
                           cv::VideoWriter::fourcc('M', 'J', 'P', 'G'),
                           capture.get(cv::CAP_PROP_FPS), size);
    if (!writer.isOpened())
        return false;
    writer.set(cv::VIDEOWRITER_PROP_QUALITY, kJpegQuality);
    cv::Mat frame;
    cv::Mat turned;
    int frames = 0;
    while (capture.read(frame)) {
        cv::rotate(frame, turned, cv::ROTATE_90_CLOCKWISE);
        writer.write(turned);
        ++frames;
    }
    return frames > 0;
}

bool writeSidecar(const QString& clip)
{
    QFile sidecar(clip + QStringLiteral(".json"));
    return sidecar.open(QIODevice::WriteOnly) && sidecar.write(kSidecar) >= 0;
}

double percentile(std::vector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    // Nearest rank.
    const auto rank = std::size_t(std::ceil(fraction * double(values.size())));
    return values[std::clamp<std::size_t>(rank, 1, values.size()) - 1];
}

struct Measurement {
    double overallPercent = 0.0;
    std::vector<double> windowPercents;
};

// The app metering `footage`: its CPU share over `measuredS` seconds after the warm-up;
// nothing when it did not keep running.
std::optional<Measurement> measure(const QString& footage, int measuredS)
{
    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("KESTRUM_CAMERA", "file:" + footage);
    environment.insert("KESTRUM_SETTINGS", home.filePath("settings.ini"));
    environment.insert("KESTRUM_PICTURES", home.filePath("Pictures"));
    environment.insert("KESTRUM_POSITION_SOURCE", "none");
    environment.insert("XDG_DATA_HOME", home.filePath("data"));
    environment.insert("XDG_CACHE_HOME", home.filePath("cache"));
    // No session bus: a Kestrum already running elsewhere would take over this start.
    environment.insert("XDG_RUNTIME_DIR", home.path());
    environment.remove("DBUS_SESSION_BUS_ADDRESS");
    QProcess app;
    app.setProcessEnvironment(environment);
    app.setProcessChannelMode(QProcess::ForwardedChannels);
    app.start(KESTRUM_APP, {});
    if (!app.waitForStarted())
        return std::nullopt;

    QThread::sleep(kWarmUpS);
    Measurement result;
    const std::optional<double> start = cpuSecondsOf(app.processId());
    std::optional<double> previous = start;
    QElapsedTimer measured;
    measured.start();
    qint64 windowStartMs = 0;
    for (int window = 1; previous && window <= measuredS; ++window) {
        QThread::msleep(std::max<qint64>(0, window * kWindowMs - measured.elapsed()));
        const qint64 nowMs = measured.elapsed();
        const std::optional<double> now = cpuSecondsOf(app.processId());
        if (now) {
            result.windowPercents.push_back(kPercent * (*now - *previous) * kMsPerS /
                                            double(nowMs - windowStartMs));
            result.overallPercent = kPercent * (*now - *start) * kMsPerS / double(nowMs);
        }
        previous = now;
        windowStartMs = nowMs;
    }
    const bool ranThrough = app.state() == QProcess::Running && previous;
    app.terminate();
    if (!app.waitForFinished(kStopTimeoutMs)) {
        app.kill();
        app.waitForFinished();
    }
    if (!ranThrough)
        return std::nullopt;
    return result;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const int measuredS = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : kDefaultMeasuredS;

    // Both clips in a folder of ours, where their sidecars can be written.
    QTemporaryDir footage;
    const QString clip = QString::fromLatin1(kClip);
    const QString withFace = footage.filePath(QStringLiteral("face.avi"));
    const QString withoutFace = footage.filePath(QStringLiteral("no-face.avi"));
    if (!QFile::link(clip, withFace) || !writeQuarterTurned(clip, withoutFace) ||
        !writeSidecar(withFace) || !writeSidecar(withoutFace)) {
        std::printf("cannot prepare the footage from %s (run scripts/bootstrap)\n", kClip);
        return 1;
    }

    std::printf("app CPU, %% of one core, over %d s after a %d s warm-up, %d ms windows\n",
                measuredS, kWarmUpS, kWindowMs);
    const std::pair<const char*, QString> runs[] = {
        {"film clip with a face", withFace},
        {"same clip a quarter turned (no face)", withoutFace},
    };
    int status = 0;
    for (const auto& [name, path] : runs) {
        const std::optional<Measurement> m = measure(path, measuredS);
        if (!m || m->windowPercents.empty()) {
            std::printf("%s: the app did not keep running\n", name);
            status = 1;
            continue;
        }
        std::printf("%s: %.1f %% overall; per window median %.1f %%, p95 %.1f %%\n", name,
                    m->overallPercent, percentile(m->windowPercents, kMedian),
                    percentile(m->windowPercents, kHighPercentile));
        const auto idle = std::count_if(m->windowPercents.begin(), m->windowPercents.end(),
                                        [](double percent) { return percent < kIdlePercent; });
        if (idle > 0) {
            std::printf("  %d of %zu windows idle: playback stalled, not a measurement\n",
                        int(idle), m->windowPercents.size());
            status = 1;
        }
        std::fflush(stdout);
    }
    return status;
}
