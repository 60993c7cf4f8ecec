// The main screen (390 × 844 points, off screen unless QT_QPA_PLATFORM says otherwise)
// over a camera whose light values this program sends, on the real clock. Reports, as
// medians and 95th percentiles:
//
// 1. while the aperture strip is dragged slowly (a press, one move of a few points per
//    touch-panel report for a few seconds, a release), each frame's synchronise and
//    render (beforeSynchronizing → frameSwapped), the interval between frames, and the
//    time from a move to the frame that shows it. Target: frames under 16 ms.
// 2. from a new light value to the first frame whose synchronisation saw the meter's
//    new outcome applied, the values sent at random phases of the meter's 0.3 s
//    throttle; and, for comparison, to the first frame that showed the light value
//    itself, which is not throttled. Target: 300 ms of throttle plus one frame.
//
// Off screen, Qt Quick draws with its software renderer on the main thread. For OpenGL
// (Mesa's llvmpipe) and the threaded render loop, run it on an X server of its own:
//   xvfb-run -a -s "-screen 0 1280x1024x24" env QT_QPA_PLATFORM=xcb build/bench/bench_mainscreen
//
// Run: build/bench/bench_mainscreen [--samples N]   (light values sent, default 40)

#include "album/locationmanager.h"
#include "album/photoalbum.h"
#include "app/appenvironment.h"
#include "app/qmlservices.h"
#include "camera/anycameracontroller.h"
#include "exposure/calculationcontroller.h"
#include "platform/desktop/desktopservices.h"
#include "platform/desktop/haptics.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "platform/time/systemclock.h"
#include "settings/settings.h"
#include "support/fakeappicon.h"
#include "support/fakemailcomposer.h"
#include "support/fakephotolibrary.h"
#include "support/fakepositionsource.h"
#include "support/fakereversegeocoder.h"
#include "support/fakewindowicon.h"
#include "support/memorypreferencestore.h"
#include "support/scriptedcameracontroller.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QRandomGenerator>
#include <QSGRendererInterface>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

Q_IMPORT_QML_PLUGIN(KestrumPlugin)

using namespace kestrum;

namespace {

// The phone the screen is laid out for.
constexpr QSize kWindowSize(390, 844);
// Time for the first frames, the scene's picture and the first reading before measuring.
constexpr int kWarmUpMs = 1500;
// A touch panel reports about 60 times a second.
constexpr int kInputIntervalMs = 16;
// A slow drag: a few points per report, back and forth over two 48-point steps.
constexpr int kDragStepPoints = 3;
constexpr int kDragAmplitudePoints = 96;
constexpr int kDragDurationMs = 4000;
// The row of values fills the strip's lower 34 points; press well inside it.
constexpr qreal kPressAboveStripBottomPoints = 12;
// The release settles the row in 200 ms; wait past that and the outcome it causes.
constexpr int kSettleMs = 800;
constexpr int kDefaultSamples = 40;
// Far enough apart that the computed speed changes by several stops.
constexpr double kDimLightValue = 8.0;
constexpr double kBrightLightValue = 12.0;
// Pauses drawn over two throttle windows put the sends at every phase of the throttle.
constexpr qint64 kPhaseSpanMs = 2 * CalculationController::kThrottleIntervalMs;
// Longer than any throttle and frame; a sample that takes this long counts as lost.
constexpr int kSampleTimeoutMs = 3000;
// The same sends on every run.
constexpr quint32 kSeed = 20240601;
constexpr double kFrameBudgetMs = 16.0;
constexpr double kNsPerMs = 1e6;

struct NoHaptics final : Haptics {
    void play(Feedback) override {}
};

struct NoDesktop final : DesktopServices {
    bool openUrl(const QUrl&) override { return false; }
    bool openCameraSettings() override { return false; }
    bool openLocationSettings() override { return false; }
};

/// The services behind the QML singletons: settings in memory, the scripted camera, an
/// empty album, no location, and the real clock that the app runs on.
struct World {
    World()
    {
        QObject::connect(&settings, &Settings::currentProfileSettingsChanged, &meter,
                         [this] { meter.setSettings(settings.currentProfileSettings()); });
        services = std::make_unique<QmlServices>(QmlServices::Sources{
            settings, store, meter, camera, nullptr, photoAlbum, locationManager, haptics, desktop,
            mail, launcherIcon, windowIcon, clock, &environment});
    }

    MemoryPreferenceStore store;
    FakeMailComposer mail{false};
    FakeAppIcon launcherIcon;
    FakeWindowIcon windowIcon;
    SystemClock clock;
    Settings settings{store, mail, {}};
    std::shared_ptr<ScriptedCameraController> scripted =
        std::make_shared<ScriptedCameraController>((kDimLightValue + kBrightLightValue) / 2);
    AnyCameraController camera{scripted};
    NoHaptics haptics;
    NoDesktop desktop;
    AppEnvironment environment;
    Calculator calculator{[this] { return settings.currentProfileSettings(); }};
    CalculationController meter{calculator, camera, settings.currentProfileSettings(), clock};
    Exiv2ImageMetadata metadata;
    FakePhotoLibrary library;
    PhotoAlbum photoAlbum{library, metadata};
    LocationManager locationManager{std::make_unique<FakePositionSource>(),
                                    std::make_unique<FakeReverseGeocoder>()};
    std::unique_ptr<QmlServices> services;
};

/// Watches the window's frames from whichever thread renders them. While recording it
/// keeps each frame's synchronise-and-render time and the interval since the previous
/// frame; while a light value is armed it notes the first frame that showed it, and
/// the first that showed the outcome it caused.
class FrameProbe {
public:
    explicit FrameProbe(const CalculationController& meter)
        : m_meter(meter)
    {
        m_clock.start();
    }

    /// Watches `window`, which must go before this probe does.
    void watch(QQuickWindow& window)
    {
        QObject::connect(
            &window, &QQuickWindow::beforeSynchronizing, &window, [this] { synchronising(); },
            Qt::DirectConnection);
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &window, [this] { swapped(); },
            Qt::DirectConnection);
    }

    qint64 nowNs() const { return m_clock.nsecsElapsed(); }

    void startRecording()
    {
        const std::lock_guard lock(m_mutex);
        m_recording = true;
        m_lastSwapNs.reset();
        m_frameNs.clear();
        m_intervalNs.clear();
        m_inputToFrameNs.clear();
        m_inputNs.reset();
    }
    void stopRecording()
    {
        const std::lock_guard lock(m_mutex);
        m_recording = false;
    }
    std::vector<qint64> frameNs() const
    {
        const std::lock_guard lock(m_mutex);
        return m_frameNs;
    }
    std::vector<qint64> intervalNs() const
    {
        const std::lock_guard lock(m_mutex);
        return m_intervalNs;
    }
    std::vector<qint64> inputToFrameNs() const
    {
        const std::lock_guard lock(m_mutex);
        return m_inputToFrameNs;
    }
    /// Call just before sending an input event; the next frame answers the oldest input
    /// that no frame has answered yet.
    void markInput()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_inputNs)
            m_inputNs = nowNs();
    }
    qint64 frames() const
    {
        const std::lock_guard lock(m_mutex);
        return m_frames;
    }
    bool renderedOffMainThread() const
    {
        const std::lock_guard lock(m_mutex);
        return m_renderedOffMainThread;
    }

    /// Call on the main thread just before sending `lightValue`; `shown` runs on the
    /// rendering thread once a frame shows the outcome.
    void arm(double lightValue, std::function<void()> shown)
    {
        const std::lock_guard lock(m_mutex);
        m_armed = Armed{nowNs(), m_meter.appliedOutcomes(), lightValue, std::move(shown)};
        m_lightValueShownNs.reset();
        m_outcomeShownNs.reset();
    }
    void disarm()
    {
        const std::lock_guard lock(m_mutex);
        m_armed.reset();
    }
    /// Nanoseconds from the send to the frame that showed the light value and the one
    /// that showed the outcome; unset until they were shown.
    std::pair<std::optional<qint64>, std::optional<qint64>> latencies() const
    {
        const std::lock_guard lock(m_mutex);
        return {m_lightValueShownNs, m_outcomeShownNs};
    }

private:
    struct Armed {
        qint64 sentNs;
        qint64 outcomesBefore;
        double lightValue;
        std::function<void()> shown;
    };

    // The main thread waits while the scene synchronises, so the meter reads safely.
    void synchronising()
    {
        const std::lock_guard lock(m_mutex);
        m_syncNs = nowNs();
        m_syncedOutcomes = m_meter.appliedOutcomes();
        m_syncedLightValue = m_meter.lightValue();
    }

    void swapped()
    {
        const std::lock_guard lock(m_mutex);
        const qint64 now = nowNs();
        ++m_frames;
        if (QThread::currentThread() != QCoreApplication::instance()->thread())
            m_renderedOffMainThread = true;
        if (m_recording) {
            if (m_syncNs)
                m_frameNs.push_back(now - *m_syncNs);
            if (m_lastSwapNs)
                m_intervalNs.push_back(now - *m_lastSwapNs);
            if (m_inputNs)
                m_inputToFrameNs.push_back(now - *std::exchange(m_inputNs, std::nullopt));
            m_lastSwapNs = now;
        }
        m_syncNs.reset();
        if (!m_armed)
            return;
        if (!m_lightValueShownNs && m_syncedLightValue == m_armed->lightValue)
            m_lightValueShownNs = now - m_armed->sentNs;
        if (m_syncedOutcomes > m_armed->outcomesBefore) {
            m_outcomeShownNs = now - m_armed->sentNs;
            m_armed->shown();
            m_armed.reset();
        }
    }

    const CalculationController& m_meter;
    QElapsedTimer m_clock;
    mutable std::mutex m_mutex;
    bool m_recording = false;
    bool m_renderedOffMainThread = false;
    qint64 m_frames = 0;
    std::optional<qint64> m_syncNs;
    std::optional<qint64> m_lastSwapNs;
    std::vector<qint64> m_frameNs;
    std::vector<qint64> m_intervalNs;
    std::vector<qint64> m_inputToFrameNs;
    std::optional<qint64> m_inputNs;
    qint64 m_syncedOutcomes = 0;
    std::optional<double> m_syncedLightValue;
    std::optional<Armed> m_armed;
    std::optional<qint64> m_lightValueShownNs;
    std::optional<qint64> m_outcomeShownNs;
};

void runEventLoopFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

struct Summary {
    double medianMs = 0;
    double p95Ms = 0;
    double maxMs = 0;
    std::size_t count = 0;
};

// Nearest-rank percentiles.
Summary summarise(std::vector<qint64> ns)
{
    if (ns.empty())
        return {};
    std::sort(ns.begin(), ns.end());
    const auto rank = [&ns](double fraction) {
        const auto index = std::size_t(std::ceil(fraction * double(ns.size()))) - 1;
        return double(ns[std::min(index, ns.size() - 1)]) / kNsPerMs;
    };
    return {rank(0.5), rank(0.95), double(ns.back()) / kNsPerMs, ns.size()};
}

void printSummary(const char* what, const Summary& summary)
{
    std::printf("  %-34s median %7.2f ms   p95 %7.2f ms   max %7.2f ms   (%zu)\n", what,
                summary.medianMs, summary.p95Ms, summary.maxMs, summary.count);
}

// The middle of the strip's row of values, in window coordinates.
QPoint rowCentre(const QQuickItem& strip)
{
    return strip
        .mapToScene(QPointF(strip.width() / 2, strip.height() - kPressAboveStripBottomPoints))
        .toPoint();
}

struct DragResult {
    int moves = 0;
    bool followed = false; // the row moved with the finger
};

// A slow drag, back and forth, one move per touch-panel report; the events carry the
// real time between them, so the release velocity is a slow finger's.
DragResult dragSlowly(QQuickWindow& window, QQuickItem& strip, FrameProbe& probe)
{
    const QPoint press = rowCentre(strip);
    QElapsedTimer sinceLastEvent;
    const auto sinceLast = [&sinceLastEvent] { return int(sinceLastEvent.restart()); };
    sinceLastEvent.start();
    QTest::mousePress(&window, Qt::LeftButton, {}, press);

    DragResult result;
    int offset = 0;
    int direction = 1;
    QElapsedTimer dragging;
    dragging.start();
    QEventLoop loop;
    QTimer reports;
    reports.setTimerType(Qt::PreciseTimer);
    reports.setInterval(kInputIntervalMs);
    QObject::connect(&reports, &QTimer::timeout, &loop, [&] {
        if (dragging.elapsed() >= kDragDurationMs) {
            reports.stop();
            QTest::mouseRelease(&window, Qt::LeftButton, {}, press + QPoint(offset, 0),
                                sinceLast());
            loop.quit();
            return;
        }
        if (std::abs(offset + direction * kDragStepPoints) > kDragAmplitudePoints)
            direction = -direction;
        offset += direction * kDragStepPoints;
        probe.markInput();
        QTest::mouseMove(&window, press + QPoint(offset, 0), sinceLast());
        ++result.moves;
        result.followed = result.followed || (strip.property("dragging").toBool() &&
                                              strip.property("rowOffset").toReal() != 0);
    });
    reports.start();
    loop.exec();
    return result;
}

} // namespace

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    const qsizetype samplesAt = arguments.indexOf("--samples");
    const int samples =
        samplesAt > 0 ? std::max(1, arguments.value(samplesAt + 1).toInt()) : kDefaultSamples;

    World world;
    FrameProbe probe(world.meter);
    int status = 0;
    {
        QQuickView view;
        // The module's QML components live in its resources, under qrc:/Kestrum.
        view.engine()->addImportPath(QStringLiteral("qrc:/"));
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(kWindowSize);
        view.setSource(QUrl(QStringLiteral("qrc:/Kestrum/ContentView.qml")));
        QQuickItem* root = view.rootObject();
        auto* strip = root ? root->property("apertureStrip").value<QQuickItem*>() : nullptr;
        if (!strip) {
            std::printf("the main screen did not load\n");
            return 1;
        }
        probe.watch(view);
        view.show();
        runEventLoopFor(kWarmUpMs);

        const char* api = "unknown";
        switch (view.rendererInterface()->graphicsApi()) {
        case QSGRendererInterface::Software:
            api = "software";
            break;
        case QSGRendererInterface::OpenGL:
            api = "OpenGL";
            break;
        case QSGRendererInterface::Vulkan:
            api = "Vulkan";
            break;
        default:
            break;
        }
        std::printf("main screen %dx%d on \"%s\", %s renderer, %s render loop; %lld frames to "
                    "warm up\n",
                    view.width(), view.height(), qPrintable(QGuiApplication::platformName()), api,
                    probe.renderedOffMainThread() ? "threaded" : "main-thread",
                    static_cast<long long>(probe.frames()));

        // 1. Dragging the aperture strip.
        probe.startRecording();
        const DragResult drag = dragSlowly(view, *strip, probe);
        probe.stopRecording();
        const Summary frame = summarise(probe.frameNs());
        const Summary interval = summarise(probe.intervalNs());
        std::printf("\ndragging the aperture strip: %d moves of %d points every %d ms over %d "
                    "ms, %zu frames%s\n",
                    drag.moves, kDragStepPoints, kInputIntervalMs, kDragDurationMs, frame.count,
                    drag.followed ? "" : " (THE ROW DID NOT FOLLOW THE FINGER)");
        printSummary("synchronise + render", frame);
        printSummary("interval between frames", interval);
        printSummary("move to the frame that shows it", summarise(probe.inputToFrameNs()));
        std::printf("  target: frames under %.0f ms: %s\n", kFrameBudgetMs,
                    frame.p95Ms < kFrameBudgetMs ? "met at p95" : "MISSED at p95");
        if (!drag.followed || frame.count == 0)
            status = 1;
        runEventLoopFor(kSettleMs);

        // 2. A new light value to the frame that shows it.
        QRandomGenerator random(kSeed);
        std::vector<qint64> toLightValue;
        std::vector<qint64> toOutcome;
        int lost = 0;
        for (int i = 0; i < samples; ++i) {
            runEventLoopFor(int(random.bounded(kPhaseSpanMs)));
            const double lightValue = i % 2 ? kDimLightValue : kBrightLightValue;
            QEventLoop loop;
            QTimer timeout;
            timeout.setSingleShot(true);
            QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
            probe.arm(lightValue, [&loop] {
                QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
            });
            world.scripted->send(lightValue);
            timeout.start(kSampleTimeoutMs);
            loop.exec();
            probe.disarm();
            const auto [lightValueNs, outcomeNs] = probe.latencies();
            if (!outcomeNs) {
                ++lost;
                continue;
            }
            toOutcome.push_back(*outcomeNs);
            if (lightValueNs)
                toLightValue.push_back(*lightValueNs);
        }
        const Summary outcome = summarise(toOutcome);
        const double budgetMs =
            double(CalculationController::kThrottleIntervalMs) + interval.medianMs;
        std::printf("\na new light value (%.0f and %.0f in turn, sent 0 to %lld ms after the "
                    "last was shown) to the frame that shows:\n",
                    kDimLightValue, kBrightLightValue, static_cast<long long>(kPhaseSpanMs));
        printSummary("the computed value (throttled)", outcome);
        printSummary("the LV read-out (not throttled)", summarise(toLightValue));
        std::printf("  target: the throttle's %lld ms plus one frame (%.1f ms): %s\n",
                    static_cast<long long>(CalculationController::kThrottleIntervalMs), budgetMs,
                    outcome.p95Ms <= budgetMs ? "met at p95" : "MISSED at p95");
        if (lost > 0) {
            std::printf("  %d of %d light values never showed\n", lost, samples);
            status = 1;
        }
    }
    return status;
}
