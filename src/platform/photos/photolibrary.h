#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QFuture>
#include <QHash>
#include <QImage>
#include <QSize>
#include <QString>

#include <exception>
#include <functional>
#include <optional>
#include <string>

namespace kestrum {

/// May the app read and add to the photo library?
enum class PhotoLibraryAuthorization {
    notDetermined, ///< nobody has been asked yet
    restricted,    ///< the system forbids access and the user cannot grant it
    denied,        ///< access was refused
    limited,       ///< only photos the user picked may be read
    authorized,    ///< full read and write access
};

/// An album of the library as last fetched.
struct PhotoLibraryAlbum {
    QString localIdentifier;
    QString title;

    friend bool operator==(const PhotoLibraryAlbum&, const PhotoLibraryAlbum&) = default;
};

/// A photo of the library as last fetched.
struct PhotoLibraryAsset {
    QString localIdentifier;
    std::optional<QDateTime> creationDate;
    QSize pixelSize; ///< invalid when the library could not tell
    /// Changes whenever the photo's data changes; equal revisions mean equal data.
    QString revision;

    friend bool operator==(const PhotoLibraryAsset&, const PhotoLibraryAsset&) = default;
};

/// What one change of the library did to the albums it touched.
class PhotoLibraryChange {
public:
    /// What a change did to one album.
    struct AlbumDetails {
        /// The album as it is after the change; nothing when it was deleted.
        std::optional<PhotoLibraryAlbum> albumAfterChanges;
    };

    void addAlbum(const QString& albumIdentifier, AlbumDetails details)
    {
        m_albums.insert(albumIdentifier, std::move(details));
    }

    /// The details for `album`; nothing when the change did not touch it.
    std::optional<AlbumDetails> changeDetails(const PhotoLibraryAlbum& album) const
    {
        const auto found = m_albums.constFind(album.localIdentifier);
        return found == m_albums.constEnd() ? std::nullopt : std::optional(*found);
    }

private:
    QHash<QString, AlbumDetails> m_albums;
};

/// Told of every change to the library, made by this program or any other.
class PhotoLibraryChangeObserver {
public:
    /// Called on the library's thread, which need not be the observer's.
    virtual void photoLibraryDidChange(const PhotoLibraryChange& change) = 0;

protected:
    ~PhotoLibraryChangeObserver() = default;
};

/// The device's photo library: albums of photos, their image data and creation dates,
/// a permission gate, and notification of changes.
///
/// The asynchronous operations finish exactly once. Those that may fail do so with a
/// PhotoLibraryException.
class PhotoLibrary {
public:
    enum class Error {
        unreadableFile, ///< the file to add could not be read
        notAnImage,     ///< the file to add holds no image the library takes
        albumMissing,   ///< the album to add to does not exist (any more)
        albumNotMade,   ///< the album could not be created
        writeFailed,    ///< storing the photo failed (permissions, disk full, I/O)
    };

    virtual ~PhotoLibrary() = default;

    virtual PhotoLibraryAuthorization authorizationStatus() const = 0;
    /// Asks for read and write access; yields the answer, which is also the status from now.
    virtual QFuture<PhotoLibraryAuthorization> requestAuthorization() = 0;

    /// The first album titled exactly `title`, or nothing.
    virtual std::optional<PhotoLibraryAlbum> fetchAlbum(const QString& title) const = 0;
    /// Creates an album titled `title`.
    virtual QFuture<void> createAlbum(const QString& title) = 0;
    /// Adds the image file at `filePath` to the library and to `album`, and yields the new
    /// photo's identifier. The file itself is left as it is.
    virtual QFuture<QString> createAsset(const QString& filePath,
                                         const PhotoLibraryAlbum& album) = 0;

    /// The photos of `album`, newest creation date first.
    virtual QList<PhotoLibraryAsset> fetchAssets(const PhotoLibraryAlbum& album) const = 0;
    /// The photo's data as stored; nothing when there is none.
    virtual QFuture<std::optional<QByteArray>>
    requestImageData(const PhotoLibraryAsset& asset) const = 0;
    /// Reads the photo's stored data again when called, from any thread and without the
    /// library, yielding nothing (empty) once the photo is gone: for keeping photos at
    /// hand without holding their bytes.
    virtual std::function<QByteArray()> storedDataReader(const PhotoLibraryAsset& asset) const = 0;
    /// The photo scaled to fit `targetSize`, keeping its aspect ratio; nothing when it
    /// cannot be decoded.
    virtual QFuture<std::optional<QImage>> requestImage(const PhotoLibraryAsset& asset,
                                                        QSize targetSize) const = 0;

    /// Adds `observer` once; registering it again changes nothing. It must unregister
    /// before it is destroyed.
    virtual void registerChangeObserver(PhotoLibraryChangeObserver* observer) = 0;
    virtual void unregisterChangeObserver(PhotoLibraryChangeObserver* observer) = 0;
};

/// A failed library operation, carried in its future.
class PhotoLibraryException : public std::exception {
public:
    PhotoLibraryException(PhotoLibrary::Error error, const QString& detail = {});

    PhotoLibrary::Error error() const { return m_error; }
    /// What went wrong, with the system's reason where there is one.
    const char* what() const noexcept override { return m_message.c_str(); }

private:
    PhotoLibrary::Error m_error;
    std::string m_message;
};

} // namespace kestrum
