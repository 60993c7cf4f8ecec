#pragma once

#include "photoalbum.h"

namespace kestrum {

/// The album when the app runs on mock data: two sample exposures, with pictures drawn
/// for them, and saves that succeed without storing anything.
///
/// The base album is built first; when the library is authorized its own load may later
/// replace the samples.
class PhotoAlbumMock final : public PhotoAlbum {
    Q_OBJECT

public:
    static constexpr auto kPortraitIdentifier = "mock_portrait_exposure";
    static constexpr auto kLandscapeIdentifier = "mock_landscape_exposure";
    /// How long before the portrait sample the landscape one was taken.
    static constexpr qint64 kLandscapeAgeSecs = 71280;

    PhotoAlbumMock(PhotoLibrary& library, const ImageMetadata& metadata, QObject* parent = nullptr);

    /// Stores nothing and yields an empty identifier.
    QFuture<QString> save(const QUrl& imageURL) override;
    /// The sample picture named `localIdentifier`, or nothing.
    QFuture<std::optional<QImage>> fullSizeImage(const QString& localIdentifier) override;

    /// The properties a camera would deliver with the portrait or the landscape sample:
    /// 1440 × 1080 pixels, orientation 6, the sample's exposure, and a position near a
    /// point chosen by `localeIdentifier` ("de-DE", "ja-JA", "zh-Hans", "zh-Hant", any
    /// other), moved by a random offset on every call.
    static ImageProperties sampleMetadata(bool portrait, const QString& localeIdentifier);
    static ImageProperties sampleMetadata(bool portrait);

    /// The current locale as language and territory joined by "-", such as "de-DE".
    static QString currentLocaleIdentifier();
};

} // namespace kestrum
