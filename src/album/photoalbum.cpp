#include "photoalbum.h"

#include <QLoggingCategory>
#include <QPromise>

namespace kestrum {

namespace {

Q_LOGGING_CATEGORY(lcPhotoAlbum, "kestrum.album.photos")

template <typename T = void> QFuture<T> failure(PhotoAlbum::Error error)
{
    return QtFuture::makeExceptionalFuture<T>(std::make_exception_ptr(PhotoAlbumException(error)));
}

} // namespace

const char* PhotoAlbumException::what() const noexcept
{
    switch (m_error) {
    case PhotoAlbum::Error::noPermission:
        return "no permission to use the photo library";
    case PhotoAlbum::Error::limitedPermission:
        return "access to the photo library is limited to selected photos";
    case PhotoAlbum::Error::albumNotFound:
        return "the album could not be found or created";
    }
    return "the photo album failed";
}

PhotoAlbum::PhotoAlbum(PhotoLibrary& library, const ImageMetadata& metadata, QObject* parent)
    : QObject(parent)
    , m_library(library)
    , m_metadata(metadata)
{
    // Registered from the start, so that an album that appears later is seen.
    m_library.registerChangeObserver(this);
    if (m_library.authorizationStatus() == PhotoLibraryAuthorization::authorized) {
        fetchAssets();
        loadLoggedExposures();
    }
}

PhotoAlbum::~PhotoAlbum()
{
    m_library.unregisterChangeObserver(this);
    for (QFuture<Load>& read : m_reads)
        read.waitForFinished();
    m_loadFinisher.waitForDone();
}

QFuture<void> PhotoAlbum::checkAuthorization()
{
    return judgeAuthorization(m_library.authorizationStatus());
}

QFuture<void> PhotoAlbum::judgeAuthorization(PhotoLibraryAuthorization status, bool answered)
{
    switch (status) {
    case PhotoLibraryAuthorization::restricted:
    case PhotoLibraryAuthorization::denied:
        return failure(Error::noPermission);
    case PhotoLibraryAuthorization::limited:
        return failure(Error::limitedPermission);
    case PhotoLibraryAuthorization::notDetermined:
        // Still undecided after asking: the library cannot be reached, and asking again
        // would never end.
        if (answered)
            return failure(Error::noPermission);
        return m_library.requestAuthorization()
            .then(this,
                  [this](PhotoLibraryAuthorization answer) {
                      return judgeAuthorization(answer, true);
                  })
            .unwrap();
    case PhotoLibraryAuthorization::authorized:
        break;
    }
    return QtFuture::makeReadyFuture();
}

QFuture<QString> PhotoAlbum::save(const QUrl& imageURL)
{
    const QString filePath = imageURL.toLocalFile();
    return checkAuthorization()
        .then(this, [this, filePath] { return addToAlbum(filePath, true); })
        .unwrap()
        .then(this, [this](const QString& localIdentifier) {
            fetchAssets();
            loadLoggedExposures();
            return localIdentifier;
        });
}

QFuture<QString> PhotoAlbum::addToAlbum(const QString& filePath, bool mayMakeAlbumAgain)
{
    // The album can go between finding it and adding to it (its folder deleted while the
    // app runs, say): it is made again, once.
    const auto again = [this, filePath, mayMakeAlbumAgain]() -> QFuture<QString> {
        if (!mayMakeAlbumAgain)
            throw PhotoAlbumException(Error::albumNotFound);
        m_assetCollection.reset();
        return addToAlbum(filePath, false);
    };
    return findOrCreateAlbum()
        .then(this,
              [this, filePath, again] {
                  if (!m_assetCollection)
                      return again();
                  return m_library.createAsset(filePath, *m_assetCollection)
                      .then([](const QString& localIdentifier) {
                          return QtFuture::makeReadyFuture(localIdentifier);
                      })
                      .onFailed(this,
                                [again](const PhotoLibraryException& error) {
                                    if (error.error() != PhotoLibrary::Error::albumMissing)
                                        throw;
                                    return again();
                                })
                      .unwrap();
              })
        .unwrap();
}

QFuture<std::optional<QImage>> PhotoAlbum::fullSizeImage(const QString& localIdentifier)
{
    for (const PhotoLibraryAsset& asset : std::as_const(m_assets)) {
        if (asset.localIdentifier == localIdentifier)
            return m_library.requestImage(asset, asset.pixelSize);
    }
    return QtFuture::makeReadyFuture(std::optional<QImage>());
}

void PhotoAlbum::fetchAlbum()
{
    if (!m_assetCollection)
        m_assetCollection = m_library.fetchAlbum(QLatin1String(kAlbumTitle));
}

QFuture<void> PhotoAlbum::findOrCreateAlbum()
{
    if (m_assetCollection)
        return QtFuture::makeReadyFuture();
    fetchAlbum();
    if (m_assetCollection)
        return QtFuture::makeReadyFuture();
    return createAlbum().then(this, [this] {
        fetchAlbum();
        if (!m_assetCollection)
            throw PhotoAlbumException(Error::albumNotFound);
    });
}

QFuture<void> PhotoAlbum::createAlbum()
{
    return checkAuthorization()
        .then(this,
              [this] {
                  return m_library.createAlbum(QLatin1String(kAlbumTitle)).onFailed([] {
                      throw PhotoAlbumException(Error::albumNotFound);
                  });
              })
        .unwrap();
}

void PhotoAlbum::fetchAssets()
{
    fetchAlbum();
    if (!m_assetCollection)
        return;
    m_assets = m_library.fetchAssets(*m_assetCollection);
    m_library.registerChangeObserver(this);
}

QFuture<void> PhotoAlbum::loadLoggedExposures()
{
    const QList<PhotoLibraryAsset> assets = m_assets;
    QList<QFuture<std::optional<LoggedExposure>>> reads;
    reads.reserve(assets.size());
    for (const PhotoLibraryAsset& asset : assets)
        reads.append(loggedExposure(asset, m_readPhotos));

    m_reads.removeIf([](const QFuture<Load>& read) { return read.isFinished(); });
    const QFuture<Load> read =
        QtFuture::whenAll(reads.begin(), reads.end())
            .then(&m_loadFinisher, [assets](
                                       const QList<QFuture<std::optional<LoggedExposure>>>& done) {
                Load load;
                QHash<QString, LoggedExposure> byIdentifier;
                for (qsizetype i = 0; i < done.size(); ++i) {
                    const std::optional<LoggedExposure> exposure = done.at(i).result();
                    load.readPhotos.insert(assets.at(i).localIdentifier, {assets.at(i), exposure});
                    if (exposure)
                        byIdentifier.insert(exposure->localIdentifier(), *exposure);
                }
                for (const PhotoLibraryAsset& asset : assets) {
                    const auto found = byIdentifier.constFind(asset.localIdentifier);
                    if (found != byIdentifier.constEnd())
                        load.exposures.append(*found);
                }
                return load;
            });
    m_reads.append(read);
    // Loads may finish out of order; one started earlier never replaces a later one's.
    const quint64 number = ++m_loadsStarted;
    m_loading = QFuture<Load>(read).then(this, [this, number](Load load) {
        if (number < m_newestLoadApplied)
            return;
        m_newestLoadApplied = number;
        m_readPhotos = std::move(load.readPhotos);
        setLoggedExposures(std::move(load.exposures));
    });
    return m_loading;
}

QFuture<std::optional<LoggedExposure>>
PhotoAlbum::loggedExposure(const PhotoLibraryAsset& asset, const ReadPhotos& readBefore) const
{
    if (!asset.creationDate)
        return QtFuture::makeReadyFuture(std::optional<LoggedExposure>());
    const auto before = readBefore.constFind(asset.localIdentifier);
    if (before != readBefore.constEnd() && before->asset == asset)
        return QtFuture::makeReadyFuture(before->exposure);

    const ImageMetadata* metadata = &m_metadata;
    return m_library.requestImageData(asset)
        .then([metadata, asset,
               reader = m_library.storedDataReader(asset)](const std::optional<QByteArray>& data) {
            if (!data)
                return std::optional<LoggedExposure>();
            // The preview reads the photo again when drawn rather than holding its bytes.
            return PhotoAlbum::loggedExposure(asset.localIdentifier, *asset.creationDate, *data,
                                              *metadata, reader);
        })
        .onFailed([identifier = asset.localIdentifier] {
            qCWarning(lcPhotoAlbum) << "photo" << identifier << "could not be requested";
            return std::optional<LoggedExposure>();
        });
}

std::optional<LoggedExposure> PhotoAlbum::loggedExposure(const QString& localIdentifier,
                                                         const QDateTime& date,
                                                         const QByteArray& data,
                                                         const ImageMetadata& metadata,
                                                         EncodedImage::Source source)
{
    const auto properties = metadata.properties(data);
    if (!properties)
        return std::nullopt;
    auto image = EncodedImage::fromData(data, std::move(source));
    if (!image)
        return std::nullopt;
    return LoggedExposure::fromProperties(localIdentifier, std::move(*image), date, *properties);
}

void PhotoAlbum::setLoggedExposures(QList<LoggedExposure> exposures)
{
    m_loggedExposures = std::move(exposures);
    emit loggedExposuresChanged();
}

void PhotoAlbum::photoLibraryDidChange(const PhotoLibraryChange& change)
{
    // The library may call from a thread of its own; the album's state lives on the main one.
    QMetaObject::invokeMethod(this, [this, change] {
        if (!m_assetCollection) {
            // An album made after start-up, or made again after it was deleted, is
            // adopted as soon as it appears.
            fetchAssets();
            if (m_assetCollection)
                loadLoggedExposures();
            return;
        }
        const auto details = change.changeDetails(*m_assetCollection);
        if (!details)
            return;
        m_assetCollection = details->albumAfterChanges;
        fetchAssets();
        loadLoggedExposures();
    });
}

} // namespace kestrum
