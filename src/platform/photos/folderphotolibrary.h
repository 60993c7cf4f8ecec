#pragma once

#include "imagemetadata.h"
#include "photolibrary.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QThreadPool>

#include <atomic>

namespace kestrum {

/// The photo library as a folder tree, for platforms without a photo library of their own.
///
/// The library is the user's Pictures folder, or the folder named by the environment
/// variable KESTRUM_PICTURES. Each album is a folder in it named after its title (the
/// album "Kestrum" is ~/Pictures/Kestrum); each photo an image file in an album folder,
/// identified by its file name. Files are taken as they are, whoever put them there;
/// hidden files and files without an image suffix are not photos.
///
/// - Authorization: authorized when the library folder is a folder this user may read
///   and write; denied when it is not (a link to nowhere among them), or when it does not
///   exist and cannot be created where it should be; not determined while it does not
///   exist yet. Asking for access creates it; when that fails, access is denied from then.
///   Restricted and limited never occur.
/// - A photo added is a copy of the file under a new unique name. The copy is written to
///   a hidden temporary file in the album folder, flushed to disk and then renamed, and
///   the folder is flushed too, so an interrupted or failed write never leaves part of a
///   photo behind and a photo added survives a power cut.
/// - A photo's creation date is its EXIF DateTimeOriginal (with SubSecTimeOriginal and
///   OffsetTimeOriginal when present; local time otherwise), written when the photo is
///   added if the file carries none; a file without one is dated by its modification time.
/// - Changes to album folders, by this program or any other, are announced to the
///   observers on this object's thread, gathered into one change per turn of the event
///   loop: photos added, removed or renamed, album folders made (also after start-up, and
///   also while the library folder itself does not exist yet) or deleted. A photo file
///   that could not be read whole (no readable metadata, or a JPEG not ending in its
///   end-of-image marker, as while another program still copies it in) is watched on its
///   own, and its album announced whenever its size or modification time changes.
/// - Opening the library tidies up after earlier runs: temporary files of additions
///   that never finished, older than a minute, are removed, and the photos of the album
///   folder of earlier versions, Kestrum/Kestrum, move up into Kestrum under names not
///   yet taken (that folder goes once it is empty).
///
/// Create it on the main thread; the fetches and requests may be used from any thread.
/// Additions and album creations run one at a time on a thread of the library's own.
class FolderPhotoLibrary final : public QObject, public PhotoLibrary {
    Q_OBJECT

public:
    static constexpr auto kPicturesVariable = "KESTRUM_PICTURES";

    /// `metadata` must outlive the library.
    FolderPhotoLibrary(QString rootPath, const ImageMetadata& metadata, QObject* parent = nullptr);
    ~FolderPhotoLibrary() override;

    /// The library folder: KESTRUM_PICTURES when set, else the user's Pictures folder.
    static QString defaultRootPath();

    QString rootPath() const { return m_rootPath; }
    /// The creation date of the image file at `filePath`, by the rule above; nothing when
    /// the file does not exist.
    static std::optional<QDateTime> creationDate(const QString& filePath,
                                                 const ImageMetadata& metadata);

    PhotoLibraryAuthorization authorizationStatus() const override;
    QFuture<PhotoLibraryAuthorization> requestAuthorization() override;
    std::optional<PhotoLibraryAlbum> fetchAlbum(const QString& title) const override;
    QFuture<void> createAlbum(const QString& title) override;
    QFuture<QString> createAsset(const QString& filePath, const PhotoLibraryAlbum& album) override;
    QList<PhotoLibraryAsset> fetchAssets(const PhotoLibraryAlbum& album) const override;
    QFuture<std::optional<QByteArray>>
    requestImageData(const PhotoLibraryAsset& asset) const override;
    std::function<QByteArray()> storedDataReader(const PhotoLibraryAsset& asset) const override;
    QFuture<std::optional<QImage>> requestImage(const PhotoLibraryAsset& asset,
                                                QSize targetSize) const override;
    void registerChangeObserver(PhotoLibraryChangeObserver* observer) override;
    void unregisterChangeObserver(PhotoLibraryChangeObserver* observer) override;

private:
    struct IndexEntry {
        qint64 sizeBytes = 0;
        QDateTime modified;
        PhotoLibraryAsset asset;
    };

    QString albumPath(const QString& title) const;
    void tidyUp();
    QString storeCopy(const QString& sourcePath, const QString& albumTitle);
    PhotoLibraryAsset indexed(const QString& filePath) const;
    std::optional<QString> pathOf(const PhotoLibraryAsset& asset) const;
    /// Brings the folder watches up to date; yields the album folders newly watched.
    QStringList watchAlbums();
    bool isAlbumPath(const QString& path) const;
    void watchIncompleteFiles();
    void onDirectoryChanged(const QString& path);
    void onFileChanged(const QString& path);
    void noteChange(const QString& albumTitle);
    void announceChanges();

    const QString m_rootPath;
    const ImageMetadata& m_metadata;
    QFileSystemWatcher m_watcher;
    QList<PhotoLibraryChangeObserver*> m_observers;
    QSet<QString> m_changedAlbums;
    QThreadPool m_changeQueue;
    std::atomic<bool> m_rootNotMade = false; // asking for access failed to create it

    // What was read of each photo file, kept while the file keeps its size and time.
    mutable QMutex m_indexMutex;
    mutable QHash<QString, IndexEntry> m_index;         // by file path
    mutable QHash<QString, QString> m_pathOfIdentifier; // by file name
    mutable QSet<QString> m_incompleteFiles;            // paths of files not read whole
    mutable bool m_fileWatchUpdateQueued = false;
};

} // namespace kestrum
