// The logged-photos sheet (LoggedPhotosView in a window of 390 × 844 points, off screen
// unless QT_QPA_PLATFORM says otherwise) over the real album: a folder library of 500
// logged photos of 4000 × 3000 pixels, read with Exiv2, their pictures from the app's
// image provider. Each round builds the library and the album afresh and loads the sheet
// in a new window, as at start-up, then opens it. Reports, as medians and 95th
// percentiles over the rounds:
//
// 1. the album's load: building the library and the album (which lists and dates the
//    photos on the main thread), and until `loggedExposures` holds every photo;
// 2. from open() to the first frame that drew the grid with cells, and to the first frame
//    whose visible cells all showed their pictures. Target: under 1 s;
// 3. while the grid scrolls down at a steady speed (contentY set at every touch-panel
//    report) and pictures load as they come into view: each frame's synchronise and
//    render (beforeSynchronizing → frameSwapped), the interval between frames, and the
//    frames that still showed a placeholder in a visible cell. Target: frames under 16 ms.
//
// The album: a few scenes are encoded once (JPEG quality 100, as the app logs, with
// sensor-like noise, so about 9.6 MB each, like a real photo at that quality), and each
// photo is a copy of one with its own logged-photo EXIF merged in by the app's metadata
// writer (exposure, camera model, position, DateTimeOriginal), written under the kind of
// name the library gives. Every photo must load as a logged exposure, or the run fails.
// Before each round after the first the files are renamed, so that the pictures' URLs are
// new and Qt Quick's pixmap cache cannot hand back an earlier round's pictures. The files
// stay in the OS page cache (warm reads) unless --cold evicts them before the album loads
// and again before the sheet opens.
//
// Off screen, Qt Quick draws with its software renderer on the main thread. For OpenGL
// (Mesa's llvmpipe) and the threaded render loop, run it on an X server of its own:
//   xvfb-run -a -s "-screen 0 1280x1024x24" env QT_QPA_PLATFORM=xcb build/bench/bench_browser
//
// Run: build/bench/bench_browser [--photos N] [--rounds N] [--scroll-ms MS] [--cold] [--smooth]
// The album takes about 5 GB in the temporary folder; --smooth leaves the noise out (JPEGs
// of 1.7 MB, which decode about twice as fast).

#include "album/locationmanager.h"
#include "album/loggedphotometadata.h"
#include "album/photoalbum.h"
#include "app/appenvironment.h"
#include "app/cli/awaitfuture.h"
#include "app/qmlservices.h"
#include "camera/anycameracontroller.h"
#include "exposure/calculationcontroller.h"
#include "exposure/scale.h"
#include "photoscenes.h"
#include "platform/desktop/desktopservices.h"
#include "platform/desktop/haptics.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "platform/photos/folderphotolibrary.h"
#include "platform/time/systemclock.h"
#include "settings/settings.h"
#include "support/fakeappicon.h"
#include "support/fakemailcomposer.h"
#include "support/fakepositionsource.h"
#include "support/fakereversegeocoder.h"
#include "support/fakewindowicon.h"
#include "support/memorypreferencestore.h"
#include "support/scriptedcameracontroller.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSGRendererInterface>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QThread>
#include <QThreadPool>
#include <QTimeZone>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

Q_IMPORT_QML_PLUGIN(KestrumPlugin)

using namespace kestrum;

namespace {

namespace key = imageproperty;

// The phone the screen is laid out for.
constexpr QSize kWindowSize(390, 844);
// A 12-megapixel phone camera's photo.
constexpr QSize kPhotoSize(4000, 3000);
// As writeLoggedPhotoFile encodes a logged photo.
constexpr int kJpegQuality = 100;
// Encoded once each: encoding 12 megapixels takes about a second.
constexpr int kScenes = 4;
constexpr int kDefaultPhotos = 500;
constexpr int kDefaultRounds = 5;
constexpr int kDefaultScrollMs = 3000;
// Photos one minute apart, from a June morning in a zone two hours east of UTC.
constexpr qint64 kPhotoSpacingS = 60;
constexpr int kUtcOffsetS = 2 * 3600;
constexpr auto kUtcOffsetText = "+02:00";
constexpr auto kExifDateFormat = "yyyy:MM:dd HH:mm:ss";
constexpr auto kNameTimeFormat = "yyyyMMdd-HHmmss-zzz";
// Time for the window's first frames, and for the sheet to settle, before measuring.
constexpr int kSettleMs = 500;
// Far longer than any open should take; an open that takes this long counts as failed.
constexpr int kOpenTimeoutMs = 20000;
// A touch panel reports about 60 times a second.
constexpr int kInputIntervalMs = 16;
// A brisk scroll: some eleven rows of pictures a second come into view.
constexpr double kScrollSpeedPointsPerS = 1500;
// QQuickImageBase::Ready, from a private header.
constexpr int kImageReady = 1;
constexpr double kOpenBudgetMs = 1000.0;
constexpr double kFrameBudgetMs = 16.0;
constexpr double kNsPerMs = 1e6;
constexpr double kBytesPerMB = 1e6;

struct NoHaptics final : Haptics {
    void play(Feedback) override {}
};

struct NoDesktop final : DesktopServices {
    bool openUrl(const QUrl&) override { return false; }
    bool openCameraSettings() override { return false; }
    bool openLocationSettings() override { return false; }
};

/// The services behind the QML singletons: the real album over the library folder
/// `libraryRoot`, settings in memory, a scripted camera and no location.
struct World {
    explicit World(const QString& libraryRoot)
        : library(libraryRoot, metadata)
    {
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
    AnyCameraController camera{std::make_shared<ScriptedCameraController>(10.0)};
    NoHaptics haptics;
    NoDesktop desktop;
    AppEnvironment environment;
    Calculator calculator{[this] { return settings.currentProfileSettings(); }};
    CalculationController meter{calculator, camera, settings.currentProfileSettings(), clock};
    Exiv2ImageMetadata metadata;
    FolderPhotoLibrary library;
    PhotoAlbum photoAlbum{library, metadata};
    LocationManager locationManager{std::make_unique<FakePositionSource>(),
                                    std::make_unique<FakeReverseGeocoder>()};
    std::unique_ptr<QmlServices> services;
};

/// The album folder's photo files, made once and renamed between rounds.
class AlbumFiles {
public:
    /// Writes `photos` logged photos into `folder`; empty `paths()` when one failed.
    AlbumFiles(const QString& folder, int photos, bool noisy, const ImageMetadata& metadata)
    {
        QDir().mkpath(folder);
        QList<QByteArray> scenes;
        for (int i = 0; i < kScenes; ++i)
            scenes.append(bench::jpegOf(bench::photoScene(kPhotoSize, i, noisy), kJpegQuality));
        const auto& speeds = scale<ShutterSpeed>(Fraction::third);
        const auto& apertures = scale<Aperture>(Fraction::third);
        const QDateTime first(QDate(2025, 6, 1), QTime(7, 0), QTimeZone(kUtcOffsetS));
        for (int i = 0; i < photos; ++i) {
            const QDateTime taken = first.addSecs(i * kPhotoSpacingS);
            ImageProperties properties = loggedPhotoMetadata(
                ISO{Fraction::full, 200, "200"}, apertures[std::size_t(i) % apertures.size()],
                speeds[std::size_t(i) % speeds.size()], Compensation{Fraction::third, 0.33, "0.3"},
                Location{-33.86 + i * 1e-4, 151.21, 12.0});
            QVariantMap exif = properties.value(key::kExifDictionary).toMap();
            exif.insert(key::kDateTimeOriginal, taken.toString(QLatin1String(kExifDateFormat)));
            exif.insert(key::kSubsecTimeOriginal, taken.toString(QStringLiteral("zzz")));
            exif.insert(key::kOffsetTimeOriginal, QLatin1String(kUtcOffsetText));
            properties.insert(key::kExifDictionary, exif);
            const std::optional<QByteArray> photo =
                metadata.merged(scenes.at(i % kScenes), properties);
            const QString path = QStringLiteral("%1/Kestrum-%2.jpeg")
                                     .arg(folder, taken.toString(QLatin1String(kNameTimeFormat)));
            QSaveFile file(path);
            if (!photo || !file.open(QIODevice::WriteOnly) || file.write(*photo) != photo->size() ||
                !file.commit()) {
                std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
                m_paths.clear();
                return;
            }
            m_paths.append(path);
            m_bytes += photo->size();
        }
    }

    const QStringList& paths() const { return m_paths; }
    qint64 bytes() const { return m_bytes; }

    /// Gives every file a new name, the same but for the round's number.
    bool rename(int round)
    {
        for (QString& path : m_paths) {
            const QFileInfo file(path);
            const QString stem = file.completeBaseName().section(QLatin1Char('_'), 0, 0);
            const QString renamed =
                QStringLiteral("%1/%2_%3.%4").arg(file.path(), stem).arg(round).arg(file.suffix());
            if (!QFile::rename(path, renamed))
                return false;
            path = renamed;
        }
        return true;
    }

    /// Drops the files from the OS page cache, so that the next reads come from the disk.
    void evict() const
    {
        for (const QString& path : m_paths) {
            const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY);
            if (descriptor < 0)
                continue;
            ::fdatasync(descriptor); // only clean pages can be dropped
            ::posix_fadvise(descriptor, 0, 0, POSIX_FADV_DONTNEED);
            ::close(descriptor);
        }
    }

private:
    QStringList m_paths;
    qint64 m_bytes = 0;
};

/// Watches the window's frames from whichever thread renders them, and the grid's cells
/// at each synchronisation (the main thread waits meanwhile, so the items read safely).
/// While an open is armed it notes the first frame that drew the grid with cells, the
/// first whose visible cells all showed their pictures, and the first with the sheet
/// fully open; while recording it keeps each frame's synchronise-and-render time, the
/// interval since the previous frame, and the frames that showed a placeholder.
class SheetProbe {
public:
    struct Cells {
        int visible = 0; // delegates in the grid's viewport
        int ready = 0;   // of those, the ones whose picture is Ready
    };
    struct OpenTimes {
        std::optional<qint64> firstGridNs;
        std::optional<qint64> allReadyNs;
        std::optional<qint64> fullyOpenNs;
        int cells = 0; // visible cells in the frame where all were ready
    };

    SheetProbe() { m_clock.start(); }

    /// Watches `window`, `sheet` and `grid`, which must go before this probe does.
    void watch(QQuickWindow& window, QObject& sheet, QQuickItem& grid)
    {
        m_sheet = &sheet;
        m_grid = &grid;
        m_contents = grid.property("contentItem").value<QQuickItem*>();
        QObject::connect(
            &window, &QQuickWindow::beforeSynchronizing, &window, [this] { synchronising(); },
            Qt::DirectConnection);
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &window, [this] { swapped(); },
            Qt::DirectConnection);
    }

    /// Cells made so far, shown or not, and how many of them have their picture; call on
    /// the main thread.
    Cells cellsMade() const
    {
        Cells cells;
        for (const QQuickItem* cell : m_contents->childItems()) {
            if (const QQuickItem* picture = pictureOf(cell)) {
                ++cells.visible;
                if (picture->property("status").toInt() == kImageReady)
                    ++cells.ready;
            }
        }
        return cells;
    }

    /// Call on the main thread just before opening the sheet; `allReady` runs on the
    /// rendering thread once a frame shows every visible picture.
    void armOpen(std::function<void()> allReady)
    {
        const std::lock_guard lock(m_mutex);
        m_openNs = nowNs();
        m_open = OpenTimes{};
        m_allReady = std::move(allReady);
    }
    OpenTimes disarmOpen()
    {
        const std::lock_guard lock(m_mutex);
        m_openNs.reset();
        m_allReady = nullptr;
        return m_open;
    }

    void startRecording()
    {
        const std::lock_guard lock(m_mutex);
        m_recording = true;
        m_lastSwapNs.reset();
        m_frameNs.clear();
        m_intervalNs.clear();
        m_placeholderFrames = 0;
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
    int placeholderFrames() const
    {
        const std::lock_guard lock(m_mutex);
        return m_placeholderFrames;
    }
    bool renderedOffMainThread() const
    {
        const std::lock_guard lock(m_mutex);
        return m_renderedOffMainThread;
    }

private:
    qint64 nowNs() const { return m_clock.nsecsElapsed(); }

    // The picture of a grid cell: the cell itself or an image in it; null for the grid's
    // other content.
    static const QQuickItem* pictureOf(const QQuickItem* cell)
    {
        if (cell->inherits("QQuickImage"))
            return cell;
        const QList<QQuickItem*> parts = cell->childItems();
        const auto picture = std::find_if(parts.cbegin(), parts.cend(), [](const QQuickItem* part) {
            return part->inherits("QQuickImage");
        });
        return picture == parts.cend() ? nullptr : *picture;
    }

    Cells visibleCells() const
    {
        Cells cells;
        const QRectF viewport(0, 0, m_grid->width(), m_grid->height());
        for (const QQuickItem* cell : m_contents->childItems()) {
            const QQuickItem* picture = pictureOf(cell);
            if (!picture || !picture->isVisible())
                continue;
            const QRectF area =
                m_grid->mapRectFromItem(picture, QRectF(0, 0, picture->width(), picture->height()));
            if (!area.intersects(viewport))
                continue;
            ++cells.visible;
            if (picture->property("status").toInt() == kImageReady)
                ++cells.ready;
        }
        return cells;
    }

    void synchronising()
    {
        const Cells cells = visibleCells();
        const bool fullyOpen = m_sheet->property("position").toReal() >= 1.0;
        const std::lock_guard lock(m_mutex);
        m_syncNs = nowNs();
        timespec ts;
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
        m_traceCpu = ts.tv_sec * 1000000000LL + ts.tv_nsec;
        m_syncedCells = cells;
        m_syncedFullyOpen = fullyOpen;
    }

    void swapped()
    {
        const std::lock_guard lock(m_mutex);
        const qint64 now = nowNs();
        if (QThread::currentThread() != QCoreApplication::instance()->thread())
            m_renderedOffMainThread = true;
        if (m_recording) {
            if (m_syncNs)
                m_frameNs.push_back(now - *m_syncNs);
            if (m_lastSwapNs)
                m_intervalNs.push_back(now - *m_lastSwapNs);
            if (m_syncedCells.ready < m_syncedCells.visible)
                ++m_placeholderFrames;
            m_lastSwapNs = now;
        }
        const qint64 traceSync = m_syncNs ? now - *m_syncNs : -1;
        timespec ts;
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
        const qint64 traceCpu = ts.tv_sec * 1000000000LL + ts.tv_nsec - m_traceCpu;
        m_syncNs.reset();
        if (!m_openNs)
            return;
        const qint64 sinceOpen = now - *m_openNs;
        if (qEnvironmentVariableIsSet("TRACE"))
            std::printf(
                "  %7.1f ms cells %d ready %d open %d sync->swap %.1f cpu %.1f children %d\n",
                sinceOpen / 1e6, m_syncedCells.visible, m_syncedCells.ready, int(m_syncedFullyOpen),
                traceSync / 1e6, traceCpu / 1e6, int(m_contents->childItems().size()));
        if (!m_open.firstGridNs && m_syncedCells.visible > 0)
            m_open.firstGridNs = sinceOpen;
        if (!m_open.fullyOpenNs && m_syncedFullyOpen)
            m_open.fullyOpenNs = sinceOpen;
        if (!m_open.allReadyNs && m_syncedCells.visible > 0 &&
            m_syncedCells.ready == m_syncedCells.visible) {
            m_open.allReadyNs = sinceOpen;
            m_open.cells = m_syncedCells.visible;
        }
        if (m_open.allReadyNs && m_open.fullyOpenNs && m_allReady)
            std::exchange(m_allReady, nullptr)();
    }

    QElapsedTimer m_clock;
    QObject* m_sheet = nullptr;
    QQuickItem* m_grid = nullptr;
    QQuickItem* m_contents = nullptr;
    mutable std::mutex m_mutex;
    bool m_renderedOffMainThread = false;
    std::optional<qint64> m_syncNs;
    Cells m_syncedCells;
    bool m_syncedFullyOpen = false;
    std::optional<qint64> m_openNs;
    OpenTimes m_open;
    std::function<void()> m_allReady;
    bool m_recording = false;
    std::optional<qint64> m_lastSwapNs;
    std::vector<qint64> m_frameNs;
    std::vector<qint64> m_intervalNs;
    int m_placeholderFrames = 0;
    qint64 m_traceCpu = 0;
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
    std::printf("  %-38s median %8.2f ms   p95 %8.2f ms   max %8.2f ms   (%zu)\n", what,
                summary.medianMs, summary.p95Ms, summary.maxMs, summary.count);
}

// The item named `name` among `root`'s descendants, depth first.
QQuickItem* findItem(QQuickItem* root, const QString& name)
{
    if (!root || root->objectName() == name)
        return root;
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = findItem(child, name))
            return found;
    }
    return nullptr;
}

const char* graphicsApiName(const QQuickWindow& window)
{
    switch (window.rendererInterface()->graphicsApi()) {
    case QSGRendererInterface::Software:
        return "software";
    case QSGRendererInterface::OpenGL:
        return "OpenGL";
    case QSGRendererInterface::Vulkan:
        return "Vulkan";
    default:
        return "unknown";
    }
}

// Scrolls the grid down at a steady speed for `durationMs`, one step per touch-panel
// report; yields the distance scrolled in points.
qreal scrollDown(QQuickItem& grid, int durationMs)
{
    const qreal startY = grid.property("contentY").toReal();
    const qreal endY =
        std::max(startY, grid.property("originY").toReal() +
                             grid.property("contentHeight").toReal() - grid.height());
    QElapsedTimer scrolling;
    scrolling.start();
    QEventLoop loop;
    QTimer reports;
    reports.setTimerType(Qt::PreciseTimer);
    reports.setInterval(kInputIntervalMs);
    QObject::connect(&reports, &QTimer::timeout, &loop, [&] {
        const qint64 elapsedMs = scrolling.elapsed();
        if (elapsedMs >= durationMs) {
            reports.stop();
            loop.quit();
            return;
        }
        grid.setProperty("contentY", std::min(endY, startY + kScrollSpeedPointsPerS *
                                                                 double(elapsedMs) / 1000.0));
    });
    reports.start();
    loop.exec();
    return grid.property("contentY").toReal() - startY;
}

double peakResidentMB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

int argument(const QStringList& arguments, const char* name, int fallback)
{
    const qsizetype at = arguments.indexOf(QLatin1String(name));
    return at > 0 ? std::max(1, arguments.value(at + 1).toInt()) : fallback;
}

} // namespace

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    const int photos = argument(arguments, "--photos", kDefaultPhotos);
    const int rounds = argument(arguments, "--rounds", kDefaultRounds);
    const int scrollMs = argument(arguments, "--scroll-ms", kDefaultScrollMs);
    const bool cold = arguments.contains(QLatin1String("--cold"));
    const bool noisy = !arguments.contains(QLatin1String("--smooth"));

    // The app takes its library folder from here, and so does this program.
    QTemporaryDir temporary;
    qputenv(FolderPhotoLibrary::kPicturesVariable, QFile::encodeName(temporary.path()));
    const QString libraryRoot = FolderPhotoLibrary::defaultRootPath();

    QElapsedTimer timer;
    timer.start();
    AlbumFiles files(QDir(libraryRoot).filePath(QLatin1String(PhotoAlbum::kAlbumTitle)), photos,
                     noisy, Exiv2ImageMetadata());
    if (files.paths().isEmpty())
        return 1;
    std::printf("album of %d logged photos of %dx%d (%d %s scenes, JPEG quality %d, %.2f MB "
                "each on average), written in %.1f s; %s reads\n",
                photos, kPhotoSize.width(), kPhotoSize.height(), kScenes,
                noisy ? "noisy" : "smooth", kJpegQuality,
                double(files.bytes()) / photos / kBytesPerMB, double(timer.elapsed()) / 1000.0,
                cold ? "cold (evicted from the page cache before loading and opening)"
                     : "warm (in the page cache)");

    std::vector<qint64> builtNs, loadedNs, firstGridNs, allReadyNs, fullyOpenNs;
    std::vector<qint64> frameNs, intervalNs;
    int placeholderFrames = 0;
    int status = 0;
    for (int round = 0; round < rounds; ++round) {
        if (round > 0 && !files.rename(round)) {
            std::printf("cannot rename the photos\n");
            return 1;
        }
        if (cold)
            files.evict();

        // 1. The album's load, as at start-up.
        timer.restart();
        World world(libraryRoot);
        builtNs.push_back(timer.nsecsElapsed());
        awaitFuture(world.photoAlbum.loading());
        loadedNs.push_back(timer.nsecsElapsed());
        const qsizetype loaded = world.photoAlbum.loggedExposures().size();
        if (loaded != photos) {
            std::printf("only %lld of %d photos loaded as logged exposures\n",
                        static_cast<long long>(loaded), photos);
            return 1;
        }

        // The load has just read every photo; the pictures should come from the disk too.
        if (cold)
            files.evict();

        SheetProbe probe;
        {
            QQuickView view;
            // The module's QML components live in its resources, under qrc:/Kestrum.
            view.engine()->addImportPath(QStringLiteral("qrc:/"));
            view.setResizeMode(QQuickView::SizeRootObjectToView);
            view.resize(kWindowSize);
            view.setSource(QUrl(QStringLiteral("qrc:/bench/BrowserStage.qml")));
            QQuickItem* root = view.rootObject();
            QObject* sheet = root ? root->property("sheet").value<QObject*>() : nullptr;
            QQuickItem* grid = sheet ? findItem(sheet->property("contentItem").value<QQuickItem*>(),
                                                QStringLiteral("grid"))
                                     : nullptr;
            if (!grid) {
                std::printf("the logged-photos sheet did not load\n");
                return 1;
            }
            probe.watch(view, *sheet, *grid);
            view.show();
            runEventLoopFor(kSettleMs);
            if (round == 0) {
                const SheetProbe::Cells made = probe.cellsMade();
                std::printf("window %dx%d on \"%s\", %s renderer, %s render loop; before "
                            "opening, %d cells made, %d with their picture\n",
                            view.width(), view.height(),
                            qPrintable(QGuiApplication::platformName()), graphicsApiName(view),
                            probe.renderedOffMainThread() ? "threaded" : "main-thread",
                            made.visible, made.ready);
            }

            // 2. Opening the sheet.
            QEventLoop loop;
            QTimer timeout;
            timeout.setSingleShot(true);
            QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
            probe.armOpen([&loop] {
                QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
            });
            QMetaObject::invokeMethod(sheet, "open");
            timeout.start(kOpenTimeoutMs);
            loop.exec();
            const SheetProbe::OpenTimes open = probe.disarmOpen();
            if (!open.firstGridNs || !open.allReadyNs || !open.fullyOpenNs) {
                std::printf("round %d: the sheet did not open with all its pictures within %d "
                            "ms\n",
                            round + 1, kOpenTimeoutMs);
                status = 1;
                break;
            }
            firstGridNs.push_back(*open.firstGridNs);
            allReadyNs.push_back(*open.allReadyNs);
            fullyOpenNs.push_back(*open.fullyOpenNs);
            std::printf("round %d: album built %6.0f ms, loaded %6.0f ms; open to first grid "
                        "%5.0f ms, fully open %5.0f ms, all %d visible pictures %5.0f ms\n",
                        round + 1, double(builtNs.back()) / kNsPerMs,
                        double(loadedNs.back()) / kNsPerMs, double(*open.firstGridNs) / kNsPerMs,
                        double(*open.fullyOpenNs) / kNsPerMs, open.cells,
                        double(*open.allReadyNs) / kNsPerMs);
            runEventLoopFor(kSettleMs);

            // 3. Scrolling the grid while its pictures load.
            probe.startRecording();
            const qreal scrolled = scrollDown(*grid, scrollMs);
            probe.stopRecording();
            if (scrolled <= 0) {
                std::printf("round %d: the grid did not scroll\n", round + 1);
                status = 1;
            }
            const std::vector<qint64> frames = probe.frameNs();
            const std::vector<qint64> intervals = probe.intervalNs();
            frameNs.insert(frameNs.end(), frames.begin(), frames.end());
            intervalNs.insert(intervalNs.end(), intervals.begin(), intervals.end());
            placeholderFrames += probe.placeholderFrames();
        }
        // The window's going cancels the pictures still asked for; the decodes under way
        // end before the next round measures.
        QThreadPool::globalInstance()->waitForDone();
        runEventLoopFor(kSettleMs);
    }

    const Summary firstGrid = summarise(firstGridNs);
    const Summary allReady = summarise(allReadyNs);
    std::printf("\nthe album's load over %d rounds (a new library and album each):\n", rounds);
    printSummary("built (lists and dates the photos)", summarise(builtNs));
    printSummary("loaded (loggedExposures holds all)", summarise(loadedNs));
    std::printf("\nfrom open() to the frame that shows:\n");
    printSummary("the grid with cells", firstGrid);
    printSummary("the sheet fully open", summarise(fullyOpenNs));
    printSummary("every visible picture", allReady);
    std::printf("  target: under %.0f ms: %s\n", kOpenBudgetMs,
                allReady.p95Ms < kOpenBudgetMs && allReady.count > 0 ? "met at p95"
                                                                     : "MISSED at p95");

    const Summary frame = summarise(frameNs);
    std::printf("\nscrolling the grid at %.0f points/s for %d ms per round, pictures loading "
                "(%zu frames, %d with a placeholder in view):\n",
                kScrollSpeedPointsPerS, scrollMs, frame.count, placeholderFrames);
    printSummary("synchronise + render", frame);
    printSummary("interval between frames", summarise(intervalNs));
    std::printf("  target: frames under %.0f ms: %s\n", kFrameBudgetMs,
                frame.p95Ms < kFrameBudgetMs && frame.count > 0 ? "met at p95" : "MISSED at p95");
    std::printf("\npeak resident memory: %.0f MB\n", peakResidentMB());
    if (frame.count == 0)
        status = 1;
    return status;
}
