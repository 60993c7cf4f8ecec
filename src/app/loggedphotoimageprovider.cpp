#include "loggedphotoimageprovider.h"

#include "album/photoalbum.h"

#include <QMutex>
#include <QQuickTextureFactory>
#include <QThreadPool>
#include <QUrl>

#include <atomic>
#include <limits>

namespace kestrum {

namespace {

// One request: finished exactly once, from whichever thread ends it; the engine deletes it
// after that, also when it cancelled the request.
class PictureResponse final : public QQuickImageResponse {
public:
    // The engine no longer wants the picture (its cell scrolled away, or asks for another
    // size): a decode not yet started is skipped, so the pictures in view come sooner.
    void cancel() override { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }

    void finish(const QImage& image, const QString& error)
    {
        {
            QMutexLocker lock(&m_mutex);
            m_image = image;
            m_error = image.isNull() ? error : QString();
        }
        emit finished();
    }

    QQuickTextureFactory* textureFactory() const override
    {
        QMutexLocker lock(&m_mutex);
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }

    QString errorString() const override
    {
        QMutexLocker lock(&m_mutex);
        return m_error;
    }

private:
    mutable QMutex m_mutex;
    QImage m_image;
    QString m_error;
    std::atomic<bool> m_cancelled = false;
};

// The size QML asked for, a side of 0 or less leaving that side free.
QSize boundingSize(const QSize& requested, int defaultSide)
{
    if (requested.width() <= 0 && requested.height() <= 0)
        return {defaultSide, defaultSide};
    constexpr int kFree = std::numeric_limits<int>::max() / 2;
    return {requested.width() > 0 ? requested.width() : kFree,
            requested.height() > 0 ? requested.height() : kFree};
}

// The pictures decode on threads of their own, not on the global pool: Qt's raster
// painting (the software renderer among its users) splits large fills across the global
// pool and waits for them, so a queue of twelve-megapixel decodes there would hold up
// frames on the main thread until it drained. Lives as long as the global pool does.
QThreadPool& decoders()
{
    static QThreadPool pool;
    return pool;
}

QImage scaledWithin(const QImage& image, const QSize& requested)
{
    if (image.isNull() || !requested.isValid() || requested.isEmpty())
        return image;
    const QSize bound = boundingSize(requested, 0);
    if (image.width() <= bound.width() && image.height() <= bound.height())
        return image;
    return image.scaled(bound, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

LoggedPhotoImageProvider::LoggedPhotoImageProvider(PhotoAlbum& album)
    : m_album(&album)
{}

QQuickImageResponse* LoggedPhotoImageProvider::requestImageResponse(const QString& id,
                                                                    const QSize& requestedSize)
{
    auto* response = new PictureResponse;
    const qsizetype slash = id.indexOf(QLatin1Char('/'));
    const QString kind = id.left(slash);
    const QString identifier = QUrl::fromPercentEncoding(id.mid(slash + 1).toUtf8());
    const bool preview = kind == QLatin1String(kPreviewPath);
    if (slash < 0 || (!preview && kind != QLatin1String(kFullSizePath))) {
        response->finish({}, QStringLiteral("no logged photo picture %1").arg(id));
        return response;
    }
    // The album lives on the main thread, and so do its list of photos and the library.
    QMetaObject::invokeMethod(this, [this, response, identifier, preview, requestedSize] {
        const QString missing = QStringLiteral("no picture of logged photo %1").arg(identifier);
        if (!m_album)
            return response->finish({}, missing);
        if (preview) {
            const auto& exposures = m_album->loggedExposures();
            const auto found = std::find_if(exposures.cbegin(), exposures.cend(),
                                            [&](const LoggedExposure& exposure) {
                                                return exposure.localIdentifier() == identifier;
                                            });
            if (found == exposures.cend())
                return response->finish({}, missing);
            const EncodedImage picture = found->previewImage();
            decoders().start([=] {
                response->finish(
                    response->isCancelled()
                        ? QImage()
                        : picture.decoded(boundingSize(requestedSize, kDefaultPreviewSidePx)),
                    missing);
            });
            return;
        }
        m_album->fullSizeImage(identifier)
            .then([=](const std::optional<QImage>& image) {
                decoders().start([=] {
                    response->finish(response->isCancelled()
                                         ? QImage()
                                         : scaledWithin(image.value_or(QImage()), requestedSize),
                                     missing);
                });
            })
            .onFailed([=] { response->finish({}, missing); });
    });
    return response;
}

} // namespace kestrum
