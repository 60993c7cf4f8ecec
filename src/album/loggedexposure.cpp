#include "loggedexposure.h"

#include "loggedphotometadata.h"

#include "exposure/shortestdecimaltext.h"

#include <cmath>
#include <limits>

namespace kestrum {

namespace {

namespace key = imageproperty;

// 2^63: the first double beyond the 64-bit integers.
constexpr double kIntegerLimit = 9223372036854775808.0;

bool isInteger(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return true;
    default:
        return false;
    }
}

bool isFloat(const QVariant& value)
{
    return value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float;
}

// A number the platform reports as a float still reads as an integer when it is whole,
// and an integer reads as a float, as numbers do when they cross the platform boundary.
std::optional<qint64> integerEntry(const QVariantMap& group, QLatin1String name)
{
    const QVariant value = group.value(name);
    if (isInteger(value))
        return value.toLongLong();
    if (isFloat(value)) {
        const double number = value.toDouble();
        if (std::trunc(number) == number && std::fabs(number) < kIntegerLimit)
            return qint64(number);
    }
    return std::nullopt;
}

std::optional<double> floatEntry(const QVariantMap& group, QLatin1String name)
{
    const QVariant value = group.value(name);
    if (isInteger(value) || isFloat(value))
        return value.toDouble();
    return std::nullopt;
}

// Whether `exposureTimeS` has a speed text: a positive time whose reciprocal, where one is
// shown, fits a 64-bit integer.
bool hasSpeedText(double exposureTimeS)
{
    if (!(exposureTimeS > 0) || !std::isfinite(exposureTimeS))
        return false;
    return exposureTimeS >= 1.0 || 1.0 / exposureTimeS < kIntegerLimit;
}

std::optional<QVariantMap> groupEntry(const ImageProperties& properties, QLatin1String name)
{
    const QVariant group = properties.value(name);
    if (group.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return group.toMap();
}

} // namespace

QString LoggedExposure::apertureText(double fNumber)
{
    return shortestDecimalText(fNumber);
}

QString LoggedExposure::speedText(double exposureTimeS)
{
    if (exposureTimeS < 1.0) {
        const double reciprocal = 1.0 / exposureTimeS;
        if (!std::isfinite(reciprocal) || reciprocal >= kIntegerLimit ||
            reciprocal < -kIntegerLimit)
            qFatal("a logged photo has an exposure time of %s s, which has no reciprocal speed",
                   qPrintable(shortestDecimalText(exposureTimeS)));
        return QStringLiteral("1/%1s").arg(static_cast<qint64>(reciprocal));
    }
    return shortestDecimalText(exposureTimeS) + QLatin1Char('s');
}

QString LoggedExposure::compensationText(double biasStops)
{
    if (biasStops > 0)
        return QLatin1Char('+') + shortestDecimalText(biasStops) + QLatin1String(" EV");
    if (biasStops == 0)
        return QStringLiteral("±0 EV");
    return shortestDecimalText(biasStops) + QLatin1String(" EV");
}

std::optional<LoggedExposure> LoggedExposure::fromProperties(QString localIdentifier,
                                                             EncodedImage previewImage,
                                                             QDateTime date,
                                                             const ImageProperties& properties)
{
    const auto exif = groupEntry(properties, key::kExifDictionary);
    if (!exif)
        return std::nullopt;
    const auto iso = integerEntry(*exif, key::kISOSpeed);
    const auto bias = floatEntry(*exif, key::kExposureBiasValue);
    const auto fNumber = floatEntry(*exif, key::kFNumber);
    const auto exposureTime = floatEntry(*exif, key::kExposureTime);
    if (!iso || !bias || !fNumber || !exposureTime)
        return std::nullopt;
    // Only the meter's own photos are held to its invariant; a photo from anywhere else
    // whose time has no speed text is simply not a logged exposure.
    const auto tiff = groupEntry(properties, key::kTIFFDictionary);
    const bool writtenByTheMeter =
        tiff && tiff->value(key::kModel).toString() == QLatin1String(kLoggedPhotoModel);
    if (!writtenByTheMeter && !hasSpeedText(*exposureTime))
        return std::nullopt;

    LoggedExposure exposure;
    exposure.m_localIdentifier = std::move(localIdentifier);
    exposure.m_previewImage = std::move(previewImage);
    exposure.m_iso = QString::number(*iso);
    exposure.m_aperture = apertureText(*fNumber);
    exposure.m_speed = speedText(*exposureTime);
    exposure.m_compensation = compensationText(*bias);
    exposure.m_date = std::move(date);
    if (const auto gps = groupEntry(properties, key::kGPSDictionary)) {
        const auto latitude = floatEntry(*gps, key::kLatitude);
        const auto longitude = floatEntry(*gps, key::kLongitude);
        if (latitude && longitude)
            exposure.m_coordinate = Coordinate{*latitude, *longitude};
    }
    return exposure;
}

} // namespace kestrum
