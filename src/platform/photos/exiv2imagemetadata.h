#pragma once

#include "imagemetadata.h"

namespace kestrum {

/// Image metadata through Exiv2, as EXIF tags.
///
/// Each property maps onto the EXIF tag of the same name, with the tag's own type:
/// integers as SHORT or LONG (rounded, clamped to the type's range), fractions as
/// RATIONAL, the exposure bias as SRATIONAL, "ExifVersion" [2, 3] as the four bytes
/// "0230". Fractions are stored as the simplest ratio of 32-bit integers that divides
/// back to the same double, so a value read back is the value written.
///
/// GPS positions are kept the EXIF way: a reference letter ("N"/"S", "E"/"W"; altitude
/// reference 0 above and 1 below sea level) and the magnitude, coordinates in degrees,
/// minutes and seconds to a millionth of a second. Reading joins them into signed
/// values again, rounded to 1e-9 degrees so that a coordinate written with up to nine
/// decimals reads back as exactly the same double. Properties without an EXIF tag here
/// (such as the reference letters) are ignored when writing.
///
/// Construct one at start-up, on the main thread: it sets up Exiv2's XMP parser, which
/// must happen before any other thread uses Exiv2.
class Exiv2ImageMetadata final : public ImageMetadata {
public:
    Exiv2ImageMetadata();

    std::optional<ImageProperties> properties(const QByteArray& data) const override;
    std::optional<ImageProperties> fileProperties(const QString& filePath) const override;
    std::optional<QByteArray> merged(const QByteArray& image,
                                     const ImageProperties& properties) const override;
};

} // namespace kestrum
