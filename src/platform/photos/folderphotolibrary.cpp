#include "folderphotolibrary.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QLoggingCategory>
#include <QPromise>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QTimeZone>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace kestrum {

namespace {

Q_LOGGING_CATEGORY(lcPhotoLibrary, "kestrum.platform.photolibrary")

namespace key = imageproperty;

constexpr auto kNamePrefix = "Kestrum-";
constexpr auto kNameTimeFormat = "yyyyMMdd-HHmmss-zzz";
constexpr auto kTemporaryTemplate = "/.kestrum-XXXXXX.part";
constexpr auto kTemporaryNameFilter = ".kestrum-*.part";
// Older than any addition still under way (one takes well under a second): left behind by
// a run that ended in the middle of one.
constexpr qint64 kStaleTemporaryAgeMs = 60'000;
// Until now the library was the folder "Kestrum" in Pictures, so the app's album was
// Pictures/Kestrum/Kestrum; it is Pictures/Kestrum now.
constexpr auto kFormerAlbumFolder = "Kestrum/Kestrum";
constexpr char kJpegStart[] = {'\xFF', '\xD8'};
constexpr char kJpegEnd[] = {'\xFF', '\xD9'};
constexpr auto kExifDateFormat = "yyyy:MM:dd HH:mm:ss";
constexpr auto kDefaultSuffix = "jpeg";
constexpr int kMaximumNameAttempts = 1000;
// Readable by all, like any other picture (temporary files start private).
constexpr QFileDevice::Permissions kPhotoPermissions =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup |
    QFileDevice::ReadOther;

// Runs `work` on `pool`; what it throws ends the future unchanged.
template <typename T, typename Work> QFuture<T> runOn(QThreadPool& pool, Work work)
{
    auto promise = std::make_shared<QPromise<T>>();
    QFuture<T> future = promise->future();
    promise->start();
    pool.start([promise, work = std::move(work)]() mutable {
        try {
            if constexpr (std::is_void_v<T>)
                work();
            else
                promise->addResult(work());
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    });
    return future;
}

bool isPhotoFile(const QFileInfo& file)
{
    static const QList<QByteArray> suffixes = QImageReader::supportedImageFormats();
    return suffixes.contains(file.suffix().toLower().toLatin1());
}

std::optional<QDateTime> exifCreationDate(const ImageProperties& properties)
{
    const QVariantMap exif = properties.value(key::kExifDictionary).toMap();
    const QDateTime local = QDateTime::fromString(exif.value(key::kDateTimeOriginal).toString(),
                                                  QLatin1String(kExifDateFormat));
    if (!local.isValid())
        return std::nullopt;
    // Sub-second digits are a decimal fraction: "5" is 500 ms, "042" is 42 ms.
    const QString subseconds = exif.value(key::kSubsecTimeOriginal).toString();
    bool digits = false;
    const int milliseconds = subseconds.left(3).leftJustified(3, QLatin1Char('0')).toInt(&digits);
    const QDateTime precise = local.addMSecs(digits ? milliseconds : 0);

    // "+02:00"; without one the date is local time.
    const QString offset = exif.value(key::kOffsetTimeOriginal).toString();
    bool hoursOk = false, minutesOk = false;
    const int hours = offset.mid(1, 2).toInt(&hoursOk);
    const int minutes = offset.mid(4, 2).toInt(&minutesOk);
    const bool signedOffset =
        offset.startsWith(QLatin1Char('+')) || offset.startsWith(QLatin1Char('-'));
    if (offset.size() != 6 || !signedOffset || !hoursOk || !minutesOk)
        return precise;
    const int seconds =
        (offset.front() == QLatin1Char('-') ? -1 : 1) * (hours * 3600 + minutes * 60);
    return QDateTime(precise.date(), precise.time(), QTimeZone(seconds));
}

ImageProperties creationDateProperties(const QDateTime& now)
{
    const int offsetMinutes = now.offsetFromUtc() / 60;
    const QString offset = QStringLiteral("%1%2:%3")
                               .arg(offsetMinutes < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                               .arg(std::abs(offsetMinutes) / 60, 2, 10, QLatin1Char('0'))
                               .arg(std::abs(offsetMinutes) % 60, 2, 10, QLatin1Char('0'));
    return {{key::kExifDictionary,
             QVariantMap{{key::kDateTimeOriginal, now.toString(QLatin1String(kExifDateFormat))},
                         {key::kSubsecTimeOriginal, now.toString(QStringLiteral("zzz"))},
                         {key::kOffsetTimeOriginal, offset}}}};
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

// Flushes the entries of `folder` (names added, renamed or removed) to disk.
void syncFolder(const QString& folder)
{
    const int descriptor =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0 || ::fsync(descriptor) != 0)
        qCWarning(lcPhotoLibrary) << "cannot flush" << folder << "to disk:" << systemError();
    if (descriptor >= 0)
        ::close(descriptor);
}

// Whether the file is whole as far as can be told without reading it all: a JPEG ends in
// its end-of-image marker, which one still being copied in lacks. Other formats pass.
bool endsWhole(const QString& filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    if (file.read(sizeof kJpegStart) != QByteArrayView(kJpegStart, sizeof kJpegStart))
        return true;
    const qint64 sizeBytes = file.size();
    return sizeBytes >= qint64(sizeof kJpegStart + sizeof kJpegEnd) &&
           file.seek(sizeBytes - qint64(sizeof kJpegEnd)) &&
           file.read(sizeof kJpegEnd) == QByteArrayView(kJpegEnd, sizeof kJpegEnd);
}

void removeStaleTemporaries(const QString& folder, const QDateTime& now)
{
    const QFileInfoList temporaries = QDir(folder).entryInfoList(
        {QLatin1String(kTemporaryNameFilter)}, QDir::Files | QDir::Hidden | QDir::System);
    for (const QFileInfo& file : temporaries) {
        if (file.lastModified().msecsTo(now) > kStaleTemporaryAgeMs &&
            !QFile::remove(file.absoluteFilePath())) {
            qCWarning(lcPhotoLibrary) << "cannot remove" << file.absoluteFilePath();
        }
    }
}

// Moves `file` into `folder` under its own name, or with "-1", "-2"… before its suffix
// when that is taken; never over another file.
bool moveUnderFreeName(const QFileInfo& file, const QString& folder)
{
    for (int attempt = 0; attempt < kMaximumNameAttempts; ++attempt) {
        const QString name = attempt == 0 ? file.fileName()
                                          : QStringLiteral("%1-%2.%3")
                                                .arg(file.completeBaseName())
                                                .arg(attempt)
                                                .arg(file.suffix());
        const QString target = folder + QLatin1Char('/') + name;
        if (QFile::rename(file.absoluteFilePath(), target))
            return true;
        if (!QFileInfo::exists(target))
            return false;
    }
    return false;
}

} // namespace

FolderPhotoLibrary::FolderPhotoLibrary(QString rootPath, const ImageMetadata& metadata,
                                       QObject* parent)
    : QObject(parent)
    , m_rootPath(QDir(rootPath).absolutePath())
    , m_metadata(metadata)
{
    m_changeQueue.setMaxThreadCount(1);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this,
            &FolderPhotoLibrary::onDirectoryChanged);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FolderPhotoLibrary::onFileChanged);
    tidyUp();
    watchAlbums();
}

FolderPhotoLibrary::~FolderPhotoLibrary()
{
    m_changeQueue.waitForDone();
}

QString FolderPhotoLibrary::defaultRootPath()
{
    QString pictures = qEnvironmentVariable(kPicturesVariable);
    if (pictures.isEmpty())
        pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    if (pictures.isEmpty())
        pictures = QDir::home().filePath(QStringLiteral("Pictures"));
    return pictures;
}

void FolderPhotoLibrary::tidyUp()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QFileInfo former(m_rootPath + QLatin1Char('/') + QLatin1String(kFormerAlbumFolder));
    if (former.isDir()) {
        const QString folder = former.absolutePath();
        removeStaleTemporaries(former.filePath(), now);
        bool moved = false;
        for (const QFileInfo& file : QDir(former.filePath()).entryInfoList(QDir::Files)) {
            if (!isPhotoFile(file))
                continue;
            if (moveUnderFreeName(file, folder))
                moved = true;
            else
                qCWarning(lcPhotoLibrary) << "cannot move" << file.filePath() << "into" << folder;
        }
        if (moved) {
            syncFolder(folder);
            syncFolder(former.filePath());
        }
        QDir(folder).rmdir(former.fileName()); // only when nothing else is left in it
    }
    for (const QString& album : QDir(m_rootPath).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        removeStaleTemporaries(albumPath(album), now);
}

std::optional<QDateTime> FolderPhotoLibrary::creationDate(const QString& filePath,
                                                          const ImageMetadata& metadata)
{
    const QFileInfo file(filePath);
    if (!file.isFile())
        return std::nullopt;
    if (const auto properties = metadata.fileProperties(filePath)) {
        if (const auto date = exifCreationDate(*properties))
            return date;
    }
    return file.lastModified();
}

PhotoLibraryAuthorization FolderPhotoLibrary::authorizationStatus() const
{
    const QFileInfo root(m_rootPath);
    if (root.exists()) {
        const bool usable =
            root.isDir() && root.isReadable() && root.isWritable() && root.isExecutable();
        return usable ? PhotoLibraryAuthorization::authorized : PhotoLibraryAuthorization::denied;
    }
    // A link to nowhere cannot be made into a folder; one that failed to be made will not be.
    if (root.isSymLink() || m_rootNotMade)
        return PhotoLibraryAuthorization::denied;
    // Not there yet: it can be made if the nearest existing folder above takes new entries.
    QFileInfo ancestor(root.absolutePath());
    while (!ancestor.exists() && !ancestor.isRoot())
        ancestor = QFileInfo(ancestor.absolutePath());
    return ancestor.isDir() && ancestor.isWritable() ? PhotoLibraryAuthorization::notDetermined
                                                     : PhotoLibraryAuthorization::denied;
}

QFuture<PhotoLibraryAuthorization> FolderPhotoLibrary::requestAuthorization()
{
    if (!QDir().mkpath(m_rootPath)) {
        qCWarning(lcPhotoLibrary) << "cannot create the library folder" << m_rootPath;
        m_rootNotMade = true;
    }
    watchAlbums();
    return QtFuture::makeReadyFuture(authorizationStatus());
}

QString FolderPhotoLibrary::albumPath(const QString& title) const
{
    return m_rootPath + QLatin1Char('/') + title;
}

std::optional<PhotoLibraryAlbum> FolderPhotoLibrary::fetchAlbum(const QString& title) const
{
    const bool plainName = !title.isEmpty() && !title.contains(QLatin1Char('/')) &&
                           title != QLatin1String(".") && title != QLatin1String("..");
    if (!plainName || !QFileInfo(albumPath(title)).isDir())
        return std::nullopt;
    return PhotoLibraryAlbum{title, title};
}

QFuture<void> FolderPhotoLibrary::createAlbum(const QString& title)
{
    return runOn<void>(m_changeQueue, [this, title] {
        if (title.isEmpty() || title.contains(QLatin1Char('/')) || !QDir(m_rootPath).mkdir(title)) {
            throw PhotoLibraryException(Error::albumNotMade, albumPath(title));
        }
        // Watch it before anyone hears that it exists.
        QMetaObject::invokeMethod(
            this, [this] { watchAlbums(); }, Qt::QueuedConnection);
    });
}

QFuture<QString> FolderPhotoLibrary::createAsset(const QString& filePath,
                                                 const PhotoLibraryAlbum& album)
{
    return runOn<QString>(m_changeQueue, [this, filePath, title = album.title] {
        return storeCopy(filePath, title);
    });
}

QString FolderPhotoLibrary::storeCopy(const QString& sourcePath, const QString& albumTitle)
{
    const QString folder = albumPath(albumTitle);
    if (!QFileInfo(folder).isDir())
        throw PhotoLibraryException(Error::albumMissing, folder);

    QFile source(sourcePath);
    if (!source.open(QIODevice::ReadOnly))
        throw PhotoLibraryException(Error::unreadableFile, source.errorString());
    QByteArray data = source.readAll();
    if (source.error() != QFileDevice::NoError)
        throw PhotoLibraryException(Error::unreadableFile, source.errorString());

    const auto properties = m_metadata.properties(data);
    if (!properties)
        throw PhotoLibraryException(Error::notAnImage, sourcePath);
    const QDateTime now = QDateTime::currentDateTime();
    if (!exifCreationDate(*properties)) {
        const auto dated = m_metadata.merged(data, creationDateProperties(now));
        if (!dated)
            throw PhotoLibraryException(Error::writeFailed, QStringLiteral("no creation date"));
        data = *dated;
    }

    QTemporaryFile temporary(folder + QLatin1String(kTemporaryTemplate));
    if (!temporary.open() || !temporary.setPermissions(kPhotoPermissions))
        throw PhotoLibraryException(Error::writeFailed, temporary.errorString());
    if (temporary.write(data) != data.size() || !temporary.flush())
        throw PhotoLibraryException(Error::writeFailed, temporary.errorString());
    if (::fsync(temporary.handle()) != 0)
        throw PhotoLibraryException(Error::writeFailed, systemError());

    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QByteArray suffix = QImageReader::imageFormat(&buffer);
    if (suffix.isEmpty())
        suffix = kDefaultSuffix;
    const QString stem = QLatin1String(kNamePrefix) + now.toString(QLatin1String(kNameTimeFormat));
    for (int attempt = 0; attempt < kMaximumNameAttempts; ++attempt) {
        const QString name =
            (attempt == 0 ? stem : stem + QLatin1Char('-') + QString::number(attempt)) +
            QLatin1Char('.') + QString::fromLatin1(suffix);
        const QString target = folder + QLatin1Char('/') + name;
        // rename never replaces: a name taken meanwhile makes it fail, and the next one is tried.
        if (temporary.rename(target)) {
            temporary.setAutoRemove(false);
            temporary.close();
            // The name is the folder's to keep: flushed, the photo survives a power cut.
            syncFolder(folder);
            QMutexLocker locker(&m_indexMutex);
            m_pathOfIdentifier.insert(name, target);
            return name;
        }
        if (!QFileInfo::exists(target))
            throw PhotoLibraryException(Error::writeFailed, temporary.errorString());
    }
    throw PhotoLibraryException(Error::writeFailed, QStringLiteral("no free file name"));
}

PhotoLibraryAsset FolderPhotoLibrary::indexed(const QString& filePath) const
{
    const QFileInfo file(filePath);
    const qint64 sizeBytes = file.size();
    const QDateTime modified = file.lastModified();
    {
        QMutexLocker locker(&m_indexMutex);
        const auto found = m_index.constFind(filePath);
        if (found != m_index.constEnd() && found->sizeBytes == sizeBytes &&
            found->modified == modified) {
            return found->asset;
        }
    }
    PhotoLibraryAsset asset{
        file.fileName(),
        modified,
        {},
        QStringLiteral("%1@%2").arg(sizeBytes).arg(modified.toMSecsSinceEpoch())};
    bool whole = false;
    if (const auto properties = m_metadata.fileProperties(filePath)) {
        asset.creationDate = exifCreationDate(*properties).value_or(modified);
        asset.pixelSize = QSize(properties->value(key::kPixelWidth).toInt(),
                                properties->value(key::kPixelHeight).toInt());
        whole = endsWhole(filePath);
    }
    QMutexLocker locker(&m_indexMutex);
    m_index.insert(filePath, {sizeBytes, modified, asset});
    m_pathOfIdentifier.insert(asset.localIdentifier, filePath);
    // A file not read whole may still be on its way in: it is watched until it is whole.
    const bool watchChanges =
        whole ? m_incompleteFiles.remove(filePath) : !m_incompleteFiles.contains(filePath);
    if (!whole)
        m_incompleteFiles.insert(filePath);
    if (watchChanges && !std::exchange(m_fileWatchUpdateQueued, true)) {
        // The watcher belongs to this object's thread; reads may run on any.
        QMetaObject::invokeMethod(const_cast<FolderPhotoLibrary*>(this),
                                  &FolderPhotoLibrary::watchIncompleteFiles, Qt::QueuedConnection);
    }
    return asset;
}

QList<PhotoLibraryAsset> FolderPhotoLibrary::fetchAssets(const PhotoLibraryAlbum& album) const
{
    const QDir folder(albumPath(album.title));
    QList<PhotoLibraryAsset> assets;
    for (const QFileInfo& file : folder.entryInfoList(QDir::Files | QDir::Readable)) {
        if (isPhotoFile(file))
            assets.append(indexed(file.absoluteFilePath()));
    }
    std::stable_sort(assets.begin(), assets.end(), [](const auto& a, const auto& b) {
        if (a.creationDate != b.creationDate)
            return a.creationDate > b.creationDate;
        return a.localIdentifier > b.localIdentifier;
    });
    return assets;
}

std::optional<QString> FolderPhotoLibrary::pathOf(const PhotoLibraryAsset& asset) const
{
    QMutexLocker locker(&m_indexMutex);
    const auto found = m_pathOfIdentifier.constFind(asset.localIdentifier);
    return found == m_pathOfIdentifier.constEnd() ? std::nullopt : std::optional(*found);
}

QFuture<std::optional<QByteArray>>
FolderPhotoLibrary::requestImageData(const PhotoLibraryAsset& asset) const
{
    const auto path = pathOf(asset);
    if (!path)
        return QtFuture::makeReadyFuture(std::optional<QByteArray>());
    return runOn<std::optional<QByteArray>>(*QThreadPool::globalInstance(), [path = *path] {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return std::optional<QByteArray>();
        QByteArray data = file.readAll();
        return data.isEmpty() ? std::nullopt : std::optional(std::move(data));
    });
}

std::function<QByteArray()>
FolderPhotoLibrary::storedDataReader(const PhotoLibraryAsset& asset) const
{
    return [path = pathOf(asset).value_or(QString())] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
}

QFuture<std::optional<QImage>> FolderPhotoLibrary::requestImage(const PhotoLibraryAsset& asset,
                                                                QSize targetSize) const
{
    const auto path = pathOf(asset);
    if (!path)
        return QtFuture::makeReadyFuture(std::optional<QImage>());
    return runOn<std::optional<QImage>>(*QThreadPool::globalInstance(), [path = *path, targetSize] {
        QImageReader reader(path);
        const QSize size = reader.size();
        if (size.isValid() && targetSize.isValid() && size != targetSize)
            reader.setScaledSize(size.scaled(targetSize, Qt::KeepAspectRatio));
        QImage image = reader.read();
        return image.isNull() ? std::nullopt : std::optional(std::move(image));
    });
}

void FolderPhotoLibrary::registerChangeObserver(PhotoLibraryChangeObserver* observer)
{
    if (!m_observers.contains(observer))
        m_observers.append(observer);
}

void FolderPhotoLibrary::unregisterChangeObserver(PhotoLibraryChangeObserver* observer)
{
    m_observers.removeAll(observer);
}

QStringList FolderPhotoLibrary::watchAlbums()
{
    // Until the library folder exists, the nearest folder above it that does is watched
    // for it to appear.
    QString nearest = m_rootPath;
    while (!QFileInfo(nearest).isDir() && !QFileInfo(nearest).isRoot())
        nearest = QFileInfo(nearest).absolutePath();
    QSet<QString> wanted{nearest};
    if (nearest == m_rootPath) {
        for (const QString& album : QDir(m_rootPath).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            wanted.insert(albumPath(album));
    }
    const QStringList watchedList = m_watcher.directories();
    const QSet<QString> watched(watchedList.cbegin(), watchedList.cend());
    const QSet<QString> unwanted = watched - wanted;
    if (!unwanted.isEmpty())
        m_watcher.removePaths(unwanted.values());
    QStringList added = (wanted - watched).values();
    if (!added.isEmpty())
        m_watcher.addPaths(added);
    added.removeIf([this](const QString& path) { return !isAlbumPath(path); });
    return added;
}

bool FolderPhotoLibrary::isAlbumPath(const QString& path) const
{
    return path.size() > m_rootPath.size() + 1 && path.startsWith(m_rootPath) &&
           path.at(m_rootPath.size()) == QLatin1Char('/') &&
           path.indexOf(QLatin1Char('/'), m_rootPath.size() + 1) < 0;
}

void FolderPhotoLibrary::watchIncompleteFiles()
{
    QSet<QString> incomplete;
    {
        QMutexLocker locker(&m_indexMutex);
        m_fileWatchUpdateQueued = false;
        incomplete = m_incompleteFiles;
    }
    const QStringList watchedList = m_watcher.files();
    const QSet<QString> watched(watchedList.cbegin(), watchedList.cend());
    const QSet<QString> whole = watched - incomplete;
    if (!whole.isEmpty())
        m_watcher.removePaths(whole.values());
    const QStringList added = (incomplete - watched).values();
    if (added.isEmpty())
        return;
    m_watcher.addPaths(added);
    // One that changed between being read and being watched would go unnoticed.
    for (const QString& path : added)
        onFileChanged(path);
}

void FolderPhotoLibrary::onDirectoryChanged(const QString& path)
{
    if (isAlbumPath(path)) {
        noteChange(QFileInfo(path).fileName());
        return;
    }
    // The library folder, or one above it: albums may have come.
    for (const QString& album : watchAlbums())
        noteChange(QFileInfo(album).fileName());
}

void FolderPhotoLibrary::onFileChanged(const QString& path)
{
    const QFileInfo file(path);
    bool changed = true;
    {
        QMutexLocker locker(&m_indexMutex);
        const auto found = m_index.constFind(path);
        if (!file.exists())
            m_incompleteFiles.remove(path);
        else if (found != m_index.constEnd())
            changed = found->sizeBytes != file.size() || found->modified != file.lastModified();
    }
    if (changed)
        noteChange(QFileInfo(file.absolutePath()).fileName());
}

void FolderPhotoLibrary::noteChange(const QString& albumTitle)
{
    m_changedAlbums.insert(albumTitle);
    if (m_changedAlbums.size() == 1)
        QTimer::singleShot(0, this, &FolderPhotoLibrary::announceChanges);
}

void FolderPhotoLibrary::announceChanges()
{
    PhotoLibraryChange change;
    for (const QString& title : std::exchange(m_changedAlbums, {}))
        change.addAlbum(title, {fetchAlbum(title)});
    // A deleted album folder drops out of the watch; one made again is watched anew, and
    // is news of its own.
    for (const QString& album : watchAlbums())
        noteChange(QFileInfo(album).fileName());
    const auto observers = m_observers;
    for (PhotoLibraryChangeObserver* observer : observers) {
        if (m_observers.contains(observer))
            observer->photoLibraryDidChange(change);
    }
}

} // namespace kestrum
