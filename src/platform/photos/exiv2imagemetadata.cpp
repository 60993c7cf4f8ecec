#include "exiv2imagemetadata.h"

#include "jpegsegments.h"

#include <QFile>
#include <QLoggingCategory>

// Exiv2 0.27's headers still use std::auto_ptr.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <string>

namespace kestrum {

namespace {

Q_LOGGING_CATEGORY(lcImageMetadata, "kestrum.platform.imagemetadata")

namespace key = imageproperty;

// How a property is kept as an EXIF tag.
enum class TagForm {
    integer,        // SHORT or LONG
    integerList,    // SHORT or LONG, several
    rational,       // RATIONAL
    signedRational, // SRATIONAL
    text,           // ASCII
    version,        // UNDEFINED, four digits
    latitude,       // RATIONAL degrees/minutes/seconds with a N/S reference
    longitude,      // the same with an E/W reference
    altitude,       // RATIONAL metres with a 0/1 reference
};

struct TagMapping {
    QLatin1String group;
    QLatin1String name;
    const char* exifKey;
    TagForm form;
};

constexpr TagMapping kMappings[] = {
    {key::kExifDictionary, key::kExifVersion, "Exif.Photo.ExifVersion", TagForm::version},
    {key::kExifDictionary, key::kISOSpeed, "Exif.Photo.ISOSpeed", TagForm::integer},
    {key::kExifDictionary, key::kISOSpeedRatings, "Exif.Photo.ISOSpeedRatings",
     TagForm::integerList},
    {key::kExifDictionary, key::kFNumber, "Exif.Photo.FNumber", TagForm::rational},
    {key::kExifDictionary, key::kExposureTime, "Exif.Photo.ExposureTime", TagForm::rational},
    {key::kExifDictionary, key::kExposureBiasValue, "Exif.Photo.ExposureBiasValue",
     TagForm::signedRational},
    {key::kExifDictionary, key::kColorSpace, "Exif.Photo.ColorSpace", TagForm::integer},
    {key::kExifDictionary, key::kPixelXDimension, "Exif.Photo.PixelXDimension", TagForm::integer},
    {key::kExifDictionary, key::kPixelYDimension, "Exif.Photo.PixelYDimension", TagForm::integer},
    {key::kExifDictionary, key::kDateTimeOriginal, "Exif.Photo.DateTimeOriginal", TagForm::text},
    {key::kExifDictionary, key::kSubsecTimeOriginal, "Exif.Photo.SubSecTimeOriginal",
     TagForm::text},
    {key::kExifDictionary, key::kOffsetTimeOriginal, "Exif.Photo.OffsetTimeOriginal",
     TagForm::text},
    {key::kTIFFDictionary, key::kModel, "Exif.Image.Model", TagForm::text},
    {key::kTIFFDictionary, key::kOrientation, "Exif.Image.Orientation", TagForm::integer},
    {key::kGPSDictionary, key::kLatitude, "Exif.GPSInfo.GPSLatitude", TagForm::latitude},
    {key::kGPSDictionary, key::kLongitude, "Exif.GPSInfo.GPSLongitude", TagForm::longitude},
    {key::kGPSDictionary, key::kAltitude, "Exif.GPSInfo.GPSAltitude", TagForm::altitude},
};

constexpr const char* kGPSVersionKey = "Exif.GPSInfo.GPSVersionID";
constexpr const char* kGPSVersion = "2 3 0 0";

// Ratios are kept within the signed range so that Exiv2's Rational reads them unharmed.
constexpr std::int64_t kLargestRatioTerm = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kMicroArcsecondsPerSecond = 1'000'000;
constexpr std::int64_t kMicroArcsecondsPerMinute = 60 * kMicroArcsecondsPerSecond;
constexpr std::int64_t kMicroArcsecondsPerDegree = 60 * kMicroArcsecondsPerMinute;
constexpr double kCoordinateResolution = 1e9; // read-back coordinates snap to 1e-9 degrees
constexpr int kContinuedFractionDepth = 64;

struct Ratio {
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;
};

std::string ratioText(Ratio ratio)
{
    return std::to_string(ratio.numerator) + '/' + std::to_string(ratio.denominator);
}

// The first convergent of the continued fraction of `magnitude` (>= 0) that divides
// back to exactly `magnitude`, else the closest one whose terms fit.
Ratio closestRatio(double magnitude)
{
    if (!(magnitude < double(kLargestRatioTerm)))
        return {kLargestRatioTerm, 1};
    std::int64_t previousNumerator = 0, numerator = 1;
    std::int64_t previousDenominator = 1, denominator = 0;
    Ratio best{0, 1};
    double rest = magnitude;
    for (int depth = 0; depth < kContinuedFractionDepth; ++depth) {
        const double whole = std::floor(rest);
        if (whole > double(kLargestRatioTerm))
            break;
        const auto term = static_cast<std::int64_t>(whole);
        const std::int64_t nextNumerator = term * numerator + previousNumerator;
        const std::int64_t nextDenominator = term * denominator + previousDenominator;
        if (nextNumerator > kLargestRatioTerm || nextDenominator > kLargestRatioTerm)
            break;
        previousNumerator = std::exchange(numerator, nextNumerator);
        previousDenominator = std::exchange(denominator, nextDenominator);
        best = {numerator, denominator};
        if (double(numerator) / double(denominator) == magnitude || rest == whole)
            break;
        rest = 1.0 / (rest - whole);
    }
    return best;
}

std::optional<double> number(const QVariant& value)
{
    bool ok = false;
    const double result = value.toDouble(&ok);
    const bool numeric = value.typeId() != QMetaType::QString &&
                         value.typeId() != QMetaType::QByteArray &&
                         value.typeId() != QMetaType::Bool;
    if (!ok || !numeric || !std::isfinite(result))
        return std::nullopt;
    return result;
}

std::int64_t largestInteger(const Exiv2::ExifKey& exifKey)
{
    return exifKey.defaultTypeId() == Exiv2::unsignedShort
               ? std::numeric_limits<std::uint16_t>::max()
               : std::numeric_limits<std::uint32_t>::max();
}

std::string integerText(double value, std::int64_t largest)
{
    return std::to_string(std::clamp<std::int64_t>(std::llround(value), 0, largest));
}

// [2, 3] is version 2.3, kept as the digits "0230".
std::string versionBytes(const QVariantList& parts)
{
    std::string digits = "0";
    for (qsizetype i = 0; i < 3; ++i) {
        const int part = i < parts.size() ? std::clamp(parts.at(i).toInt(), 0, 9) : 0;
        digits += char('0' + part);
    }
    std::string bytes;
    // Appended piece by piece: GCC 12 at -O3 misreads `"" + std::string` as an overlapping
    // copy (-Wrestrict), which breaks Release builds.
    for (const char digit : digits) {
        if (!bytes.empty())
            bytes += ' ';
        bytes += std::to_string(int(digit));
    }
    return bytes;
}

void writeCoordinate(Exiv2::ExifData& exif, const char* exifKey, double degrees, char positive,
                     char negative)
{
    // Whole micro-arcseconds carry into minutes and degrees by themselves.
    const std::int64_t total = std::llround(std::fabs(degrees) * double(kMicroArcsecondsPerDegree));
    const std::int64_t seconds = total % kMicroArcsecondsPerMinute;
    const std::int64_t divisor = std::gcd(seconds, kMicroArcsecondsPerSecond);
    exif[exifKey] = std::to_string(total / kMicroArcsecondsPerDegree) + "/1 " +
                    std::to_string(total % kMicroArcsecondsPerDegree / kMicroArcsecondsPerMinute) +
                    "/1 " + ratioText({seconds / divisor, kMicroArcsecondsPerSecond / divisor});
    exif[std::string(exifKey) + "Ref"] = std::string(1, degrees < 0 ? negative : positive);
}

void writeProperty(Exiv2::ExifData& exif, const TagMapping& mapping, const QVariant& value)
{
    const Exiv2::ExifKey exifKey(mapping.exifKey);
    const std::optional<double> numeric = number(value);
    switch (mapping.form) {
    case TagForm::integer:
        if (numeric)
            exif[mapping.exifKey] = integerText(*numeric, largestInteger(exifKey));
        return;
    case TagForm::integerList: {
        std::string text;
        const QVariantList items =
            value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList{value};
        for (const QVariant& item : items) {
            if (const auto element = number(item)) {
                if (!text.empty())
                    text += ' '; // not `"" + std::string`: see versionBytes
                text += integerText(*element, largestInteger(exifKey));
            }
        }
        if (!text.empty())
            exif[mapping.exifKey] = text;
        return;
    }
    case TagForm::rational:
        if (numeric && *numeric >= 0)
            exif[mapping.exifKey] = ratioText(closestRatio(*numeric));
        return;
    case TagForm::signedRational:
        if (numeric) {
            Ratio ratio = closestRatio(std::fabs(*numeric));
            if (*numeric < 0)
                ratio.numerator = -ratio.numerator;
            exif[mapping.exifKey] = ratioText(ratio);
        }
        return;
    case TagForm::text:
        exif[mapping.exifKey] = value.toString().toStdString();
        return;
    case TagForm::version:
        exif[mapping.exifKey] = versionBytes(value.toList());
        return;
    case TagForm::latitude:
        if (numeric)
            writeCoordinate(exif, mapping.exifKey, *numeric, 'N', 'S');
        return;
    case TagForm::longitude:
        if (numeric)
            writeCoordinate(exif, mapping.exifKey, *numeric, 'E', 'W');
        return;
    case TagForm::altitude:
        if (numeric) {
            exif["Exif.GPSInfo.GPSAltitudeRef"] = std::string(*numeric < 0 ? "1" : "0");
            exif[mapping.exifKey] = ratioText(closestRatio(std::fabs(*numeric)));
        }
        return;
    }
}

const Exiv2::Exifdatum* find(const Exiv2::ExifData& exif, const std::string& exifKey)
{
    // findKey, not operator[], which would add the key.
    const auto found = exif.findKey(Exiv2::ExifKey(exifKey));
    return found == exif.end() ? nullptr : &*found;
}

std::optional<double> ratioValue(const Exiv2::Exifdatum& datum, long index)
{
    if (index >= datum.count())
        return std::nullopt;
    double numerator = 0, denominator = 0;
    if (const auto* unsignedValue = dynamic_cast<const Exiv2::URationalValue*>(&datum.value())) {
        numerator = unsignedValue->value_.at(std::size_t(index)).first;
        denominator = unsignedValue->value_.at(std::size_t(index)).second;
    } else {
        const Exiv2::Rational ratio = datum.toRational(index);
        numerator = ratio.first;
        denominator = ratio.second;
    }
    if (denominator == 0)
        return std::nullopt;
    return numerator / denominator;
}

std::optional<double> coordinateValue(const Exiv2::ExifData& exif, const char* exifKey,
                                      char negative)
{
    const auto* datum = find(exif, exifKey);
    if (!datum || datum->count() == 0)
        return std::nullopt;
    double degrees = 0;
    double unit = 1;
    for (long i = 0; i < std::min(datum->count(), 3L); ++i, unit *= 60) {
        const auto part = ratioValue(*datum, i);
        if (!part)
            return std::nullopt;
        degrees += *part / unit;
    }
    degrees = std::round(degrees * kCoordinateResolution) / kCoordinateResolution;
    const auto* reference = find(exif, std::string(exifKey) + "Ref");
    const bool flipped =
        reference && !reference->toString().empty() &&
        std::toupper(static_cast<unsigned char>(reference->toString().front())) == negative;
    return flipped ? -degrees : degrees;
}

QVariantList versionParts(const Exiv2::Exifdatum& datum)
{
    if (datum.count() != 4)
        return {};
    QVariantList parts{qint64((datum.toLong(0) - '0') * 10 + datum.toLong(1) - '0'),
                       qint64(datum.toLong(2) - '0')};
    if (datum.toLong(3) != '0')
        parts.append(qint64(datum.toLong(3) - '0'));
    return parts;
}

std::optional<QVariant> readProperty(const Exiv2::ExifData& exif, const TagMapping& mapping)
{
    switch (mapping.form) {
    case TagForm::latitude:
        if (const auto degrees = coordinateValue(exif, mapping.exifKey, 'S'))
            return QVariant(*degrees);
        return std::nullopt;
    case TagForm::longitude:
        if (const auto degrees = coordinateValue(exif, mapping.exifKey, 'W'))
            return QVariant(*degrees);
        return std::nullopt;
    default:
        break;
    }
    const auto* datum = find(exif, mapping.exifKey);
    if (!datum || datum->count() == 0)
        return std::nullopt;
    switch (mapping.form) {
    case TagForm::integer:
        return QVariant(qint64(datum->toLong(0)));
    case TagForm::integerList: {
        QVariantList items;
        for (long i = 0; i < datum->count(); ++i)
            items.append(qint64(datum->toLong(i)));
        return QVariant(items);
    }
    case TagForm::rational:
    case TagForm::signedRational:
        if (const auto value = ratioValue(*datum, 0))
            return QVariant(*value);
        return std::nullopt;
    case TagForm::text:
        return QVariant(QString::fromStdString(datum->toString()).trimmed());
    case TagForm::version:
        return QVariant(versionParts(*datum));
    case TagForm::altitude: {
        const auto metres = ratioValue(*datum, 0);
        if (!metres)
            return std::nullopt;
        const auto* reference = find(exif, "Exif.GPSInfo.GPSAltitudeRef");
        return QVariant(reference && reference->toLong(0) == 1 ? -*metres : *metres);
    }
    case TagForm::latitude:
    case TagForm::longitude:
        break;
    }
    return std::nullopt;
}

ImageProperties propertiesOf(Exiv2::Image& image)
{
    image.readMetadata();
    ImageProperties result;
    if (image.pixelWidth() > 0 && image.pixelHeight() > 0) {
        result.insert(key::kPixelWidth, qint64(image.pixelWidth()));
        result.insert(key::kPixelHeight, qint64(image.pixelHeight()));
    }
    const Exiv2::ExifData& exif = image.exifData();
    for (const TagMapping& mapping : kMappings) {
        const auto value = readProperty(exif, mapping);
        if (!value)
            continue;
        QVariantMap group = result.value(mapping.group).toMap();
        group.insert(mapping.name, *value);
        result.insert(mapping.group, group);
    }
    return result;
}

const TagMapping* mappingFor(const QString& group, const QString& name)
{
    for (const TagMapping& mapping : kMappings) {
        if (mapping.group == group && mapping.name == name)
            return &mapping;
    }
    return nullptr;
}

void routeExiv2Message(int level, const char* message)
{
    // Damaged files are routine in a folder others write to; they are skipped, not fatal.
    if (level >= Exiv2::LogMsg::warn)
        qCDebug(lcImageMetadata, "exiv2: %s", QByteArray(message).trimmed().constData());
}

} // namespace

Exiv2ImageMetadata::Exiv2ImageMetadata()
{
    Exiv2::XmpParser::initialize();
    Exiv2::LogMsg::setHandler(routeExiv2Message);
}

std::optional<ImageProperties> Exiv2ImageMetadata::properties(const QByteArray& data) const
{
    if (data.isEmpty())
        return std::nullopt;
    // A JPEG's metadata all comes before its image data; Exiv2 copies what it is given.
    const auto segments = JpegSegments::of(data);
    const qsizetype length = segments ? segments->scanStart : data.size();
    try {
        auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(data.data()),
                                               long(length));
        return image.get() ? std::optional(propertiesOf(*image)) : std::nullopt;
    } catch (const std::exception& error) {
        qCDebug(lcImageMetadata) << "not an image:" << error.what();
        return std::nullopt;
    }
}

std::optional<ImageProperties> Exiv2ImageMetadata::fileProperties(const QString& filePath) const
{
    try {
        auto image = Exiv2::ImageFactory::open(QFile::encodeName(filePath).toStdString(), false);
        return image.get() ? std::optional(propertiesOf(*image)) : std::nullopt;
    } catch (const std::exception& error) {
        qCDebug(lcImageMetadata) << "not an image:" << filePath << error.what();
        return std::nullopt;
    }
}

std::optional<QByteArray> Exiv2ImageMetadata::merged(const QByteArray& image,
                                                     const ImageProperties& properties) const
{
    // Only a JPEG's segments before its image data change. Exiv2 rewrites all it is given,
    // which for a large photo costs a hundred milliseconds, so it gets those segments alone.
    const auto segments = JpegSegments::of(image);
    const qsizetype headLength = segments ? segments->scanStart : image.size();
    try {
        auto opened = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(image.data()),
                                                long(headLength));
        if (!opened.get())
            return std::nullopt;
        opened->readMetadata();
        Exiv2::ExifData& exif = opened->exifData();
        for (auto group = properties.cbegin(); group != properties.cend(); ++group) {
            const QVariantMap entries = group.value().toMap();
            for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
                if (const TagMapping* mapping = mappingFor(group.key(), entry.key()))
                    writeProperty(exif, *mapping, entry.value());
            }
        }
        if (properties.contains(key::kGPSDictionary) && !find(exif, kGPSVersionKey))
            exif[kGPSVersionKey] = std::string(kGPSVersion);
        opened->writeMetadata();

        Exiv2::BasicIo& io = opened->io();
        io.seek(0, Exiv2::BasicIo::beg);
        const Exiv2::DataBuf written = io.read(io.size());
        QByteArray result;
        result.reserve(written.size_ + image.size() - headLength);
        result.append(reinterpret_cast<const char*>(written.pData_), written.size_);
        result.append(QByteArrayView(image).sliced(headLength));
        return result;
    } catch (const std::exception& error) {
        qCWarning(lcImageMetadata) << "metadata not written:" << error.what();
        return std::nullopt;
    }
}

} // namespace kestrum
