#pragma once

#include "imageproperties.h"

#include <QImage>
#include <QString>

#include <stdexcept>

namespace kestrum {

class ImageMetadata;

/// Why the file of a logged photo could not be written, in a short text for the log or
/// the command line.
class LoggedPhotoFileException : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The file a logged photo is written to before the album takes a copy of it.
inline constexpr auto kLoggedPhotoFileName = "Kestrum.jpeg";

/// Writes `image` as a JPEG of the highest quality, with `properties` merged into its
/// metadata, to kLoggedPhotoFileName in `directory` (complete or not at all), and returns
/// the file's path. Throws LoggedPhotoFileException when the image is null, cannot be
/// encoded, cannot take the metadata, or the file cannot be written. Safe on any thread.
QString writeLoggedPhotoFile(const QImage& image, const ImageProperties& properties,
                             const ImageMetadata& metadata, const QString& directory);

} // namespace kestrum
