// Logs photos of 4000 × 3000 pixels into a fresh folder library, the way the meter logs
// them (metadata merged into a quality-100 JPEG, written to Kestrum.jpeg, then saved into
// the album), and then loads the album back from scratch.
//
// Prints the median, fastest and slowest save (PhotoAlbum::save until its future
// finishes; the JPEG encoding is the camera's and is not counted), the time from building
// the album until `loggedExposures` holds every photo, and the peak resident memory.
//
// Run: build/bench/bench_album [--photos N] [--noisy]
// --noisy adds sensor-like noise, which makes the JPEGs about six times larger, like
// real photos at quality 100.

#include "album/loggedphotometadata.h"
#include "album/photoalbum.h"
#include "app/cli/awaitfuture.h"
#include "exposure/scale.h"
#include "photoscenes.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "platform/photos/folderphotolibrary.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QThreadPool>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>

using namespace kestrum;

namespace {

constexpr int kDefaultPhotos = 200;
constexpr QSize kPhotoSize(4000, 3000);
constexpr int kScenes = 4; // encoded once each; every log gets its own metadata
constexpr int kJpegQuality = 100;

double peakResidentMB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024.0;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    const qsizetype photosAt = arguments.indexOf("--photos");
    const int photos = photosAt > 0 ? arguments.value(photosAt + 1).toInt() : kDefaultPhotos;
    const bool noisy = arguments.contains("--noisy");

    QTemporaryDir dir;
    const Exiv2ImageMetadata metadata;
    const QString root = dir.filePath("Kestrum");
    const QString temporaryPath = dir.filePath("Kestrum.jpeg");

    QList<QByteArray> scenes;
    for (int i = 0; i < kScenes; ++i)
        scenes.append(bench::jpegOf(bench::photoScene(kPhotoSize, i, noisy), kJpegQuality));
    std::printf("%d photos of %dx%d, JPEG quality %d, %.2f MB each (%s scene)\n", photos,
                kPhotoSize.width(), kPhotoSize.height(), kJpegQuality, scenes.first().size() / 1e6,
                noisy ? "noisy" : "smooth");
    std::printf("peak memory before logging: %.0f MB\n", peakResidentMB());

    std::vector<double> savesMs;
    {
        FolderPhotoLibrary library(root, metadata);
        PhotoAlbum album(library, metadata);
        const auto& speeds = scale<ShutterSpeed>(Fraction::third);
        const auto& apertures = scale<Aperture>(Fraction::third);
        for (int i = 0; i < photos; ++i) {
            const ImageProperties properties = loggedPhotoMetadata(
                ISO{Fraction::full, 200, "200"}, apertures[std::size_t(i) % apertures.size()],
                speeds[std::size_t(i) % speeds.size()], Compensation{Fraction::third, 0.33, "0.3"},
                Location{-33.86 + i * 1e-4, 151.21, 12.0});
            QSaveFile file(temporaryPath);
            file.open(QIODevice::WriteOnly);
            file.write(*metadata.merged(scenes.at(i % kScenes), properties));
            file.commit();

            QElapsedTimer timer;
            timer.start();
            const auto saved = album.save(QUrl::fromLocalFile(temporaryPath));
            awaitFuture(saved);
            savesMs.push_back(timer.nsecsElapsed() / 1e6);
            try {
                saved.result();
            } catch (const std::exception& error) {
                std::fprintf(stderr, "a save failed: %s\n", error.what());
                return 1;
            }
        }
        // Let the reloads that the saves started finish before the album goes.
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    }
    std::printf("save: median %.1f ms, fastest %.1f ms, slowest %.1f ms\n", median(savesMs),
                *std::min_element(savesMs.begin(), savesMs.end()),
                *std::max_element(savesMs.begin(), savesMs.end()));
    std::printf("peak memory after logging: %.0f MB\n", peakResidentMB());
    scenes.clear();

    QElapsedTimer timer;
    timer.start();
    {
        const FolderPhotoLibrary lister(root, metadata);
        const auto listed = lister.fetchAssets(*lister.fetchAlbum(PhotoAlbum::kAlbumTitle));
        std::printf("listing and dating %lld photos: %.0f ms\n", qlonglong(listed.size()),
                    timer.nsecsElapsed() / 1e6);
    }

    // A fresh library and album, as at start-up: nothing is known about the photos yet.
    timer.restart();
    FolderPhotoLibrary library(root, metadata);
    PhotoAlbum album(library, metadata);
    awaitFuture(album.loading());
    if (album.loggedExposures().size() != photos)
        std::printf("only %lld of %d photos loaded\n", qlonglong(album.loggedExposures().size()),
                    photos);
    const double loadMs = timer.nsecsElapsed() / 1e6;
    std::printf("load until loggedExposures holds all %d: %.0f ms\n", photos, loadMs);
    std::printf("peak memory after loading: %.0f MB\n", peakResidentMB());

    // What drawing the previews costs, decoded from the kept bytes when asked for.
    const EncodedImage& preview = album.loggedExposures().first().previewImage();
    timer.restart();
    const QImage full = preview.decoded();
    const double fullMs = timer.nsecsElapsed() / 1e6;
    timer.restart();
    const QImage thumbnail = preview.decoded(QSize(500, 375));
    const double thumbnailMs = timer.nsecsElapsed() / 1e6;
    std::printf("one preview decoded: full %dx%d %.0f ms, 500x375 %.0f ms\n", full.width(),
                full.height(), fullMs, thumbnail.width() > 0 ? thumbnailMs : -1.0);
    return 0;
}
