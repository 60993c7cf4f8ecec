#include "fakephotolibrary.h"

#include <QFile>

#include <algorithm>

namespace kestrum {

namespace {
constexpr qint64 kFirstPhotoSecs = 1'700'000'000;
constexpr qint64 kSecsBetweenPhotos = 60;

template <typename T> QFuture<T> failure(PhotoLibrary::Error error)
{
    return QtFuture::makeExceptionalFuture<T>(
        std::make_exception_ptr(PhotoLibraryException(error)));
}
} // namespace

PhotoLibraryAlbum FakePhotoLibrary::addAlbum(const QString& title)
{
    const PhotoLibraryAlbum album{QStringLiteral("album-%1").arg(++m_serial), title};
    m_albums.append(album);
    return album;
}

PhotoLibraryAsset FakePhotoLibrary::addPhoto(const PhotoLibraryAlbum& album, const QByteArray& data,
                                             std::optional<QDateTime> creationDate)
{
    const QString identifier = QStringLiteral("photo-%1").arg(++m_serial);
    const PhotoLibraryAsset asset{identifier, creationDate, QImage::fromData(data).size(),
                                  identifier};
    m_photos.append({album.localIdentifier, asset, data});
    return asset;
}

void FakePhotoLibrary::announce(const PhotoLibraryChange& change)
{
    const auto observers = m_observers;
    for (PhotoLibraryChangeObserver* observer : observers)
        observer->photoLibraryDidChange(change);
}

QFuture<PhotoLibraryAuthorization> FakePhotoLibrary::requestAuthorization()
{
    ++m_authorizationRequests;
    m_status = m_answer;
    return QtFuture::makeReadyFuture(m_answer);
}

std::optional<PhotoLibraryAlbum> FakePhotoLibrary::fetchAlbum(const QString& title) const
{
    const auto found = std::find_if(m_albums.cbegin(), m_albums.cend(),
                                    [&title](const auto& album) { return album.title == title; });
    return found == m_albums.cend() ? std::nullopt : std::optional(*found);
}

QFuture<void> FakePhotoLibrary::createAlbum(const QString& title)
{
    ++m_albumCreations;
    if (m_albumCreationFails)
        return failure<void>(Error::albumNotMade);
    addAlbum(title);
    return QtFuture::makeReadyFuture();
}

QFuture<QString> FakePhotoLibrary::createAsset(const QString& filePath,
                                               const PhotoLibraryAlbum& album)
{
    if (m_assetCreationError)
        return failure<QString>(*m_assetCreationError);
    if (!m_albums.contains(album))
        return failure<QString>(Error::albumMissing);
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return failure<QString>(Error::unreadableFile);
    const auto date =
        QDateTime::fromSecsSinceEpoch(kFirstPhotoSecs + m_serial * kSecsBetweenPhotos);
    return QtFuture::makeReadyFuture(addPhoto(album, file.readAll(), date).localIdentifier);
}

QList<PhotoLibraryAsset> FakePhotoLibrary::fetchAssets(const PhotoLibraryAlbum& album) const
{
    QList<PhotoLibraryAsset> assets;
    for (const Photo& photo : m_photos) {
        if (photo.albumIdentifier == album.localIdentifier)
            assets.append(photo.asset);
    }
    std::stable_sort(assets.begin(), assets.end(),
                     [](const auto& a, const auto& b) { return a.creationDate > b.creationDate; });
    return assets;
}

QByteArray FakePhotoLibrary::dataOf(const PhotoLibraryAsset& asset) const
{
    for (const Photo& photo : m_photos) {
        if (photo.asset.localIdentifier == asset.localIdentifier)
            return photo.data;
    }
    return {};
}

QFuture<std::optional<QByteArray>>
FakePhotoLibrary::requestImageData(const PhotoLibraryAsset& asset) const
{
    const QByteArray data = dataOf(asset);
    return QtFuture::makeReadyFuture(data.isEmpty() ? std::nullopt : std::optional(data));
}

std::function<QByteArray()> FakePhotoLibrary::storedDataReader(const PhotoLibraryAsset& asset) const
{
    return [data = dataOf(asset)] { return data; };
}

QFuture<std::optional<QImage>> FakePhotoLibrary::requestImage(const PhotoLibraryAsset& asset,
                                                              QSize) const
{
    const QImage image = QImage::fromData(dataOf(asset));
    return QtFuture::makeReadyFuture(image.isNull() ? std::nullopt : std::optional(image));
}

} // namespace kestrum
