#pragma once

#include <QLatin1String>
#include <QVariantMap>

namespace kestrum {

/// The properties of one image, as the image I/O layer reads and writes them: top-level
/// entries ("PixelWidth", "PixelHeight") and one nested QVariantMap per metadata group
/// ("{Exif}", "{TIFF}", "{GPS}"), keyed by the texts below.
///
/// Numbers are qint64 where the format stores integers, double where it stores
/// fractions, QVariantList for lists. GPS values are signed degrees (south and west
/// negative) and signed metres; the hemisphere reference tags are the writer's business.
using ImageProperties = QVariantMap;

namespace imageproperty {

inline constexpr QLatin1String kPixelWidth("PixelWidth");
inline constexpr QLatin1String kPixelHeight("PixelHeight");

inline constexpr QLatin1String kExifDictionary("{Exif}");
inline constexpr QLatin1String kExifVersion("ExifVersion");
inline constexpr QLatin1String kISOSpeed("ISOSpeed");
inline constexpr QLatin1String kISOSpeedRatings("ISOSpeedRatings");
inline constexpr QLatin1String kFNumber("FNumber");
inline constexpr QLatin1String kExposureTime("ExposureTime");
inline constexpr QLatin1String kExposureBiasValue("ExposureBiasValue");
inline constexpr QLatin1String kColorSpace("ColorSpace");
inline constexpr QLatin1String kPixelXDimension("PixelXDimension");
inline constexpr QLatin1String kPixelYDimension("PixelYDimension");
/// "yyyy:MM:dd HH:mm:ss" in the photographer's local time.
inline constexpr QLatin1String kDateTimeOriginal("DateTimeOriginal");
/// Decimal digits of the fraction of a second of DateTimeOriginal, e.g. "042".
inline constexpr QLatin1String kSubsecTimeOriginal("SubsecTimeOriginal");
/// The UTC offset of DateTimeOriginal, e.g. "+02:00".
inline constexpr QLatin1String kOffsetTimeOriginal("OffsetTimeOriginal");

inline constexpr QLatin1String kTIFFDictionary("{TIFF}");
inline constexpr QLatin1String kModel("Model");
inline constexpr QLatin1String kOrientation("Orientation");

inline constexpr QLatin1String kGPSDictionary("{GPS}");
inline constexpr QLatin1String kLatitude("Latitude");
inline constexpr QLatin1String kLongitude("Longitude");
inline constexpr QLatin1String kAltitude("Altitude");
inline constexpr QLatin1String kLatitudeRef("LatitudeRef");
inline constexpr QLatin1String kLongitudeRef("LongitudeRef");

} // namespace imageproperty

} // namespace kestrum
