#pragma once

#include "imageproperties.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace kestrum {

/// Reads and writes the metadata embedded in image files (EXIF, TIFF and GPS tags)
/// as ImageProperties. Safe to call from several threads at once.
class ImageMetadata {
public:
    virtual ~ImageMetadata() = default;

    /// The properties of the first image in `data`; nothing when `data` does not open as
    /// an image. An image without metadata yields a map without groups.
    virtual std::optional<ImageProperties> properties(const QByteArray& data) const = 0;

    /// The same for the image file at `filePath`, reading only as much of it as the
    /// metadata takes.
    virtual std::optional<ImageProperties> fileProperties(const QString& filePath) const = 0;

    /// `image` with `properties` merged into its metadata: entries given replace those
    /// present, others stay. Nothing when `image` does not open or cannot take them.
    virtual std::optional<QByteArray> merged(const QByteArray& image,
                                             const ImageProperties& properties) const = 0;
};

} // namespace kestrum
