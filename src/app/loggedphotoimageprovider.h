#pragma once

#include <QPointer>
#include <QQuickAsyncImageProvider>

namespace kestrum {

class PhotoAlbum;

/// The pictures of the logged photos, decoded off the main thread at the size the QML
/// asks for (`sourceSize`): `image://loggedphotos/preview/<localIdentifier>` is the photo's
/// preview, `image://loggedphotos/full/<localIdentifier>` the full-size picture from the
/// photo library. The model's `previewSource` and `fullSizeSource` roles give these URLs.
///
/// The album is asked on the main thread, where it lives; decoding and scaling run on a
/// thread pool of the provider's own. A photo that is gone, or cannot be decoded, fails
/// the request.
class LoggedPhotoImageProvider : public QQuickAsyncImageProvider {
public:
    static constexpr auto kProviderId = "loggedphotos";
    static constexpr auto kPreviewPath = "preview";
    static constexpr auto kFullSizePath = "full";
    /// The longer side of a preview when the QML gives no size.
    static constexpr int kDefaultPreviewSidePx = 512;

    explicit LoggedPhotoImageProvider(PhotoAlbum& album);

    QQuickImageResponse* requestImageResponse(const QString& id,
                                              const QSize& requestedSize) override;

private:
    QPointer<PhotoAlbum> m_album;
};

} // namespace kestrum
