#pragma once

#include "loggedexposure.h"

#include "platform/photos/imagemetadata.h"
#include "platform/photos/photolibrary.h"

#include <QFuture>
#include <QHash>
#include <QList>
#include <QObject>
#include <QThreadPool>
#include <QUrl>

#include <exception>
#include <optional>

namespace kestrum {

/// The album of logged photos: the album titled "Kestrum" in the photo library, found or
/// created on the first save, and the readable photos in it as LoggedExposures, newest
/// first.
///
/// Every successful save and every library change that touches the album reloads the
/// whole list; loads are neither cancelled nor merged, and the last to finish wins. A
/// load reads each photo on the thread pool and assigns `loggedExposures` once, on the
/// main thread. A photo whose identifier, creation date and revision are what they were
/// at the previous load is not read again: its exposure from then is used. Photos that
/// cannot be read, or carry no exposure, are left out.
///
/// An album that appears after start-up (made by another program, or made again after
/// being deleted) is adopted when the library announces it; one deleted between finding
/// it and adding a photo is made again by that save. A library that stays undecided after
/// being asked for access counts as denied.
///
/// Lives on the main thread. The library and the metadata reader must outlive it;
/// destroying it waits for the photos being read.
class PhotoAlbum : public QObject, private PhotoLibraryChangeObserver {
    Q_OBJECT
    Q_PROPERTY(QList<kestrum::LoggedExposure> loggedExposures READ loggedExposures NOTIFY
                   loggedExposuresChanged)

public:
    enum class Error {
        noPermission,      ///< access to the library is restricted or denied
        limitedPermission, ///< access is limited to photos the user picked
        albumNotFound,     ///< the album could not be created, or not found after creation
    };
    Q_ENUM(Error)

    static constexpr auto kAlbumTitle = "Kestrum";

    /// Starts loading at once when the library is already authorized.
    PhotoAlbum(PhotoLibrary& library, const ImageMetadata& metadata, QObject* parent = nullptr);
    ~PhotoAlbum() override;

    /// Finishes when the library may be read and written, asking the user first when
    /// nobody has yet. Fails with a PhotoAlbumException (noPermission, limitedPermission).
    QFuture<void> checkAuthorization();

    /// Adds the image file at `imageURL` (a local file) to the album, then reloads. Yields
    /// the new photo's identifier. Fails with a PhotoAlbumException, or with the library's
    /// PhotoLibraryException when adding the photo failed.
    virtual QFuture<QString> save(const QUrl& imageURL);

    /// The photo `localIdentifier` of the album at its full pixel size, or nothing.
    virtual QFuture<std::optional<QImage>> fullSizeImage(const QString& localIdentifier);

    const QList<LoggedExposure>& loggedExposures() const { return m_loggedExposures; }

    /// Reads the album's photos again; finishes after `loggedExposures` was assigned.
    QFuture<void> loadLoggedExposures();
    /// The load started last, whoever started it (construction, a save, a change of the
    /// library); finishes after its `loggedExposures` was assigned. Finished when no load
    /// was ever started.
    QFuture<void> loading() const { return m_loading; }

    /// The exposure in a photo's stored `data`; nothing when the data does not open as an
    /// image, does not decode, or carries no exposure. The preview reads the data again
    /// from `source` when one is given, else keeps it.
    static std::optional<LoggedExposure>
    loggedExposure(const QString& localIdentifier, const QDateTime& date, const QByteArray& data,
                   const ImageMetadata& metadata, EncodedImage::Source source = {});

signals:
    void loggedExposuresChanged();

protected:
    /// Replaces the list in one assignment and tells the observers.
    void setLoggedExposures(QList<LoggedExposure> exposures);

private:
    struct ReadPhoto {
        PhotoLibraryAsset asset;
        std::optional<LoggedExposure> exposure;
    };
    using ReadPhotos = QHash<QString, ReadPhoto>;
    struct Load {
        QList<LoggedExposure> exposures;
        ReadPhotos readPhotos;
    };

    void photoLibraryDidChange(const PhotoLibraryChange& change) override;
    QFuture<void> judgeAuthorization(PhotoLibraryAuthorization status, bool answered = false);
    QFuture<QString> addToAlbum(const QString& filePath, bool mayMakeAlbumAgain);
    void fetchAlbum();
    QFuture<void> findOrCreateAlbum();
    QFuture<void> createAlbum();
    void fetchAssets();
    QFuture<std::optional<LoggedExposure>> loggedExposure(const PhotoLibraryAsset& asset,
                                                          const ReadPhotos& readBefore) const;

    PhotoLibrary& m_library;
    const ImageMetadata& m_metadata;
    std::optional<PhotoLibraryAlbum> m_assetCollection;
    QList<PhotoLibraryAsset> m_assets;
    QList<LoggedExposure> m_loggedExposures;
    ReadPhotos m_readPhotos; // as of the last load to finish
    // The reading part of the loads under way, waited for on destruction: they use the
    // library and the metadata reader.
    QList<QFuture<Load>> m_reads;
    // Where each load's last step runs; drained on destruction, since that step hands
    // the result to this object's thread as it ends.
    QThreadPool m_loadFinisher;
    QFuture<void> m_loading = QtFuture::makeReadyFuture();
    quint64 m_loadsStarted = 0;
    quint64 m_newestLoadApplied = 0;
};

/// A failure of the photo album, carried in its futures.
class PhotoAlbumException : public std::exception {
public:
    explicit PhotoAlbumException(PhotoAlbum::Error error)
        : m_error(error)
    {}

    PhotoAlbum::Error error() const { return m_error; }
    const char* what() const noexcept override;

private:
    PhotoAlbum::Error m_error;
};

} // namespace kestrum
