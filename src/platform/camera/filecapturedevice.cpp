#include "filecapturedevice.h"

#include "captureframequeue.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QMediaPlayer>
#include <QTimer>
#include <QVideoFrame>
#include <QVideoSink>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcCapture, "kestrum.platform.camera")

constexpr std::chrono::microseconds kStillFrameInterval{1'000'000 /
                                                        FileCaptureDevice::kStillFramesPerSecond};

std::optional<float> number(const QJsonObject& object, const QString& key)
{
    const QJsonValue value = object.value(key);
    return value.isDouble() ? std::optional(float(value.toDouble())) : std::nullopt;
}

QStringList imageSuffixes()
{
    QStringList suffixes;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        suffixes.append(QString::fromLatin1(format));
    return suffixes;
}

QStringList imagesIn(const QString& folder)
{
    QStringList patterns;
    for (const QString& suffix : imageSuffixes())
        patterns.append(QStringLiteral("*.") + suffix);
    const QDir dir(folder);
    QStringList paths;
    for (const QString& name : dir.entryList(patterns, QDir::Files, QDir::Name))
        paths.append(dir.filePath(name));
    return paths;
}

} // namespace

QString FileCaptureDevice::Sidecar::pathFor(const QString& mediaPath)
{
    QString path = QDir::cleanPath(mediaPath);
    return path + QStringLiteral(".json");
}

FileCaptureDevice::Sidecar FileCaptureDevice::Sidecar::read(const QString& mediaPath)
{
    QFile file(pathFor(mediaPath));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    return {number(object, QStringLiteral("iso")),
            number(object, QStringLiteral("exposureDuration")),
            number(object, QStringLiteral("aperture"))};
}

FileCaptureDevice::FileCaptureDevice(const QString& path, QObject* parent)
    : FixedLensCaptureDevice(parent)
    , m_path(path)
{}

FileCaptureDevice::~FileCaptureDevice()
{
    // Stop the sources before the frame queue waits for its last frame.
    if (m_player)
        m_player->stop();
    if (m_stillTimer)
        m_stillTimer->stop();
}

QString FileCaptureDevice::id() const
{
    return QString::fromLatin1(kDeviceId);
}

AuthorizationStatus FileCaptureDevice::authorizationStatus() const
{
    const QFileInfo info(m_path);
    return info.exists() && !info.isReadable() ? AuthorizationStatus::denied
                                               : AuthorizationStatus::authorized;
}

QFuture<bool> FileCaptureDevice::requestAccess()
{
    return QtFuture::makeReadyFuture(authorizationStatus() == AuthorizationStatus::authorized);
}

bool FileCaptureDevice::findCamera()
{
    const QFileInfo info(m_path);
    if (!info.exists())
        return false;
    if (info.isDir()) {
        m_stills = imagesIn(m_path);
        if (m_stills.isEmpty())
            return false;
        m_media = Media::stills;
    } else if (imageSuffixes().contains(info.suffix().toLower())) {
        m_stills = {m_path};
        m_media = Media::stills;
    } else {
        m_media = Media::video;
    }
    m_sidecar = Sidecar::read(m_path);
    return true;
}

void FileCaptureDevice::createInput()
{
    if (m_media == Media::stills) {
        QImageReader reader(m_stills.first());
        const QImage first = reader.read();
        if (first.isNull())
            throw CaptureDeviceException(
                QStringLiteral("Cannot read %1: %2").arg(m_stills.first(), reader.errorString()));
        if (m_stills.size() == 1)
            m_onlyStill = first;
        return;
    }
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        throw CaptureDeviceException(
            QStringLiteral("Cannot read %1: %2").arg(m_path, file.errorString()));
    m_sink = new QVideoSink(this);
    m_player = new QMediaPlayer(this);
    m_player->setVideoSink(m_sink);
    m_player->setLoops(QMediaPlayer::Infinite);
    m_player->setSource(QUrl::fromLocalFile(QFileInfo(m_path).absoluteFilePath()));
    connect(m_sink, &QVideoSink::videoFrameChanged, &frames(), &CaptureFrameQueue::pushVideoFrame);
    connect(m_player, &QMediaPlayer::playbackStateChanged, this,
            [this](QMediaPlayer::PlaybackState state) {
                setRunning(state == QMediaPlayer::PlayingState);
            });
    connect(m_player, &QMediaPlayer::errorOccurred, this,
            [this](QMediaPlayer::Error, const QString& text) {
                qCWarning(lcCapture) << "Cannot play" << m_path << ":" << text;
            });
}

void FileCaptureDevice::startRunning()
{
    QMetaObject::invokeMethod(this, [this] { run(); });
}

void FileCaptureDevice::run()
{
    if (m_player) {
        m_player->play();
        return;
    }
    if (m_media != Media::stills || m_stillTimer)
        return;
    m_stillTimer = new QTimer(this);
    m_stillTimer->setTimerType(Qt::PreciseTimer);
    m_stillTimer->setInterval(
        std::chrono::duration_cast<std::chrono::milliseconds>(kStillFrameInterval));
    connect(m_stillTimer, &QTimer::timeout, this, &FileCaptureDevice::nextStill);
    m_stillTimer->start();
    setRunning(true);
}

void FileCaptureDevice::setRunning(bool running)
{
    if (running == m_running)
        return;
    m_running = running;
    emit runningChanged(running);
}

void FileCaptureDevice::nextStill()
{
    const auto time = m_stillIndex * kStillFrameInterval;
    if (!m_onlyStill.isNull()) {
        frames().push([image = m_onlyStill] { return image; }, time);
    } else {
        const QString path = m_stills.at(m_stillIndex % m_stills.size());
        frames().push([path] { return QImage(path); }, time);
    }
    ++m_stillIndex;
}
} // namespace kestrum
