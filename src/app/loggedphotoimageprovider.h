#pragma once

#include <QPointer>
#include <QQuickAsyncImageProvider>

#include <memory>

namespace kestrum {

class PhotoAlbum;

/// The pictures of the logged photos, decoded off the main thread at the size the QML
/// asks for (`sourceSize`): `image://loggedphotos/preview/<localIdentifier>` is the photo's
/// preview, `image://loggedphotos/full/<localIdentifier>` the full-size picture from the
/// photo library. The model's `previewSource` and `fullSizeSource` roles give these URLs.
///
/// The album is asked on the main thread, where it lives; decoding and scaling run on a
/// thread pool of the provider's own, which its destruction drains: the decodes under way
/// end, and the requests still waiting fail at once. A photo that is gone, or cannot be
/// decoded, fails the request.
class LoggedPhotoImageProvider : public QQuickAsyncImageProvider {
public:
    static constexpr auto kProviderId = "loggedphotos";
    static constexpr auto kPreviewPath = "preview";
    static constexpr auto kFullSizePath = "full";
    /// The longer side of a preview when the QML gives no size.
    static constexpr int kDefaultPreviewSidePx = 512;

    explicit LoggedPhotoImageProvider(PhotoAlbum& album);
    ~LoggedPhotoImageProvider() override;

    QQuickImageResponse* requestImageResponse(const QString& id,
                                              const QSize& requestedSize) override;

private:
    struct Decoders;

    QPointer<PhotoAlbum> m_album;
    // Shared with the full-size requests still waiting for the library, which may outlive
    // the provider.
    std::shared_ptr<Decoders> m_decoders;
};

} // namespace kestrum
