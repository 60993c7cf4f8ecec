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

// The pictures decode on threads of their own, not on the global pool: Qt's raster
// painting (the software renderer among its users) splits large fills across the global
// pool and waits for them, so a queue of twelve-megapixel decodes there would hold up
// frames on the main thread until it drained. The pool is the provider's, not the
// process's: a decode still running when the application object goes would wait forever
// for the global pool, which its scaling uses and which stops with it.
struct LoggedPhotoImageProvider::Decoders {
    /// Runs `picture` for `response` on the pool; once stopping, or when the engine
    /// cancelled the request, the response fails without decoding.
    template <typename Picture>
    void start(PictureResponse* response, Picture picture, const QString& missing)
    {
        pool.start([this, response, picture = std::move(picture), missing] {
            const bool wanted = !stopping && !response->isCancelled();
            response->finish(wanted ? picture() : QImage(), missing);
        });
    }

    std::atomic<bool> stopping = false;
    QThreadPool pool; // after `stopping`, so that it goes first and waits for its tasks
};

LoggedPhotoImageProvider::LoggedPhotoImageProvider(PhotoAlbum& album)
    : m_album(&album)
    , m_decoders(std::make_shared<Decoders>())
{}

LoggedPhotoImageProvider::~LoggedPhotoImageProvider()
{
    m_decoders->stopping = true;
    m_decoders->pool.waitForDone();
}

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
            m_decoders->start(
                response,
                [picture, requestedSize] {
                    return picture.decoded(boundingSize(requestedSize, kDefaultPreviewSidePx));
                },
                missing);
            return;
        }
        m_album->fullSizeImage(identifier)
            .then([=, decoders = std::weak_ptr(m_decoders)](const std::optional<QImage>& image) {
                const std::shared_ptr<Decoders> pool = decoders.lock();
                if (!pool)
                    return response->finish({}, missing);
                pool->start(
                    response,
                    [image, requestedSize] {
                        return scaledWithin(image.value_or(QImage()), requestedSize);
                    },
                    missing);
            })
            .onFailed([=] { response->finish({}, missing); });
    });
    return response;
}

} // namespace kestrum
