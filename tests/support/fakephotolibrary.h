#pragma once

#include "platform/photos/photolibrary.h"

#include <QList>

namespace kestrum {

/// A photo library in memory, for tests. It answers at once, records what was asked of
/// it, and fails where it is told to. Photos added get creation dates a minute apart,
/// in the order they arrive.
class FakePhotoLibrary final : public PhotoLibrary {
public:
    void setAuthorizationStatus(PhotoLibraryAuthorization status) { m_status = status; }
    /// What the user answers when asked; the answer becomes the status.
    void setAuthorizationAnswer(PhotoLibraryAuthorization answer) { m_answer = answer; }
    int authorizationRequests() const { return m_authorizationRequests; }

    /// Makes album creation fail with albumNotMade.
    void setAlbumCreationFails(bool fails) { m_albumCreationFails = fails; }
    /// Makes adding photos fail with `error`, or succeed again with nothing.
    void setAssetCreationError(std::optional<Error> error) { m_assetCreationError = error; }
    int albumCreations() const { return m_albumCreations; }

    /// An album made by someone else, as it would be found in the library.
    PhotoLibraryAlbum addAlbum(const QString& title);
    void removeAlbum(const PhotoLibraryAlbum& album) { m_albums.removeAll(album); }
    /// A photo put into `album` by someone else, with `data` as its stored bytes; not
    /// announced to the observers.
    PhotoLibraryAsset addPhoto(const PhotoLibraryAlbum& album, const QByteArray& data,
                               std::optional<QDateTime> creationDate);
    /// Deletes every photo of `album`, as someone else would; not announced.
    void removePhotos(const PhotoLibraryAlbum& album)
    {
        m_photos.removeIf(
            [&](const Photo& photo) { return photo.albumIdentifier == album.localIdentifier; });
    }
    /// Tells every observer of `change`.
    void announce(const PhotoLibraryChange& change);

    PhotoLibraryAuthorization authorizationStatus() const override { return m_status; }
    QFuture<PhotoLibraryAuthorization> requestAuthorization() override;
    std::optional<PhotoLibraryAlbum> fetchAlbum(const QString& title) const override;
    QFuture<void> createAlbum(const QString& title) override;
    QFuture<QString> createAsset(const QString& filePath, const PhotoLibraryAlbum& album) override;
    QList<PhotoLibraryAsset> fetchAssets(const PhotoLibraryAlbum& album) const override;
    QFuture<std::optional<QByteArray>>
    requestImageData(const PhotoLibraryAsset& asset) const override;
    std::function<QByteArray()> storedDataReader(const PhotoLibraryAsset& asset) const override;
    /// The photo at its own size, whatever size is asked for.
    QFuture<std::optional<QImage>> requestImage(const PhotoLibraryAsset& asset,
                                                QSize targetSize) const override;
    void registerChangeObserver(PhotoLibraryChangeObserver* observer) override
    {
        if (!m_observers.contains(observer))
            m_observers.append(observer);
    }
    void unregisterChangeObserver(PhotoLibraryChangeObserver* observer) override
    {
        m_observers.removeAll(observer);
    }

private:
    struct Photo {
        QString albumIdentifier;
        PhotoLibraryAsset asset;
        QByteArray data;
    };

    /// The stored bytes of a photo; empty for one that is not there.
    QByteArray dataOf(const PhotoLibraryAsset& asset) const;

    PhotoLibraryAuthorization m_status = PhotoLibraryAuthorization::authorized;
    PhotoLibraryAuthorization m_answer = PhotoLibraryAuthorization::authorized;
    int m_authorizationRequests = 0;
    bool m_albumCreationFails = false;
    int m_albumCreations = 0;
    std::optional<Error> m_assetCreationError;
    QList<PhotoLibraryAlbum> m_albums;
    QList<Photo> m_photos;
    int m_serial = 0;
    QList<PhotoLibraryChangeObserver*> m_observers;
};

} // namespace kestrum
