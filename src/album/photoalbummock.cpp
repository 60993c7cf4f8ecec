#include "photoalbummock.h"

#include "loggedphotometadata.h"

#include <QFile>
#include <QLocale>
#include <QRandomGenerator>

#include <array>

namespace kestrum {

namespace {

namespace key = imageproperty;

constexpr auto kImageResourcePath = ":/kestrum/album/%1.jpeg";

constexpr qint64 kPixelWidth = 1440;
constexpr qint64 kPixelHeight = 1080;
constexpr qint64 kOrientation = 6;
constexpr qint64 kDepth = 8;
constexpr qint64 kColorSpace = 1;
constexpr int kExifVersionMajor = 2;
constexpr int kExifVersionMinor = 3;
constexpr auto kColorModel = "RGB";
constexpr auto kProfileName = "sRGB IEC61966-2.1";
constexpr double kAltitudeM = 35.93964003511852;

struct SamplePoint {
    const char* localeIdentifier;
    double latitude;
    double longitude;
};
constexpr std::array kSamplePoints{
    SamplePoint{"de-DE", 50.82, 6.45},
    SamplePoint{"ja-JA", 35.14, 136.96},
    SamplePoint{"zh-Hans", 31.14, 121.20},
    SamplePoint{"zh-Hant", 24.82, 121.52},
};
constexpr SamplePoint kDefaultSamplePoint{"", 37.33, -122.01};
constexpr double kLatitudeOffsetMin = 0.0001;
constexpr double kLongitudeOffsetMin = 0.001;
constexpr double kOffsetMax = 0.01;

struct SampleExposure {
    qint64 iso;
    double fNumber;
    double exposureTimeS;
    double biasStops;
};
constexpr SampleExposure kPortraitExposure{200, 2.8, 0.002, 0.33};
constexpr SampleExposure kLandscapeExposure{100, 11.0, 0.25, 0.0};

double randomIn(double from, double below)
{
    return from + QRandomGenerator::global()->generateDouble() * (below - from);
}

QByteArray imageResource(const QString& name)
{
    QFile file(QString::fromLatin1(kImageResourcePath).arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

LoggedExposure sample(const char* identifier, bool portrait, const QDateTime& date)
{
    const auto image = EncodedImage::fromData(imageResource(QLatin1String(identifier)));
    if (!image)
        qFatal("the mock image %s is missing", identifier);
    auto exposure = LoggedExposure::fromProperties(QLatin1String(identifier), *image, date,
                                                   PhotoAlbumMock::sampleMetadata(portrait));
    if (!exposure)
        qFatal("the mock exposure %s cannot be read from its own metadata", identifier);
    return *exposure;
}

// Built once per process, as the photos of a fixed moment.
const QList<LoggedExposure>& samples()
{
    static const QList<LoggedExposure> exposures = [] {
        const QDateTime now = QDateTime::currentDateTime();
        return QList<LoggedExposure>{
            sample(PhotoAlbumMock::kPortraitIdentifier, true, now),
            sample(PhotoAlbumMock::kLandscapeIdentifier, false,
                   now.addSecs(-PhotoAlbumMock::kLandscapeAgeSecs)),
        };
    }();
    return exposures;
}

} // namespace

PhotoAlbumMock::PhotoAlbumMock(PhotoLibrary& library, const ImageMetadata& metadata,
                               QObject* parent)
    : PhotoAlbum(library, metadata, parent)
{
    setLoggedExposures(samples());
}

QFuture<QString> PhotoAlbumMock::save(const QUrl&)
{
    return QtFuture::makeReadyFuture(QString());
}

QFuture<std::optional<QImage>> PhotoAlbumMock::fullSizeImage(const QString& localIdentifier)
{
    const QImage image = QImage::fromData(imageResource(localIdentifier));
    return QtFuture::makeReadyFuture(image.isNull() ? std::nullopt : std::optional(image));
}

QString PhotoAlbumMock::currentLocaleIdentifier()
{
    return QLocale().name().replace(QLatin1Char('_'), QLatin1Char('-'));
}

ImageProperties PhotoAlbumMock::sampleMetadata(bool portrait)
{
    return sampleMetadata(portrait, currentLocaleIdentifier());
}

ImageProperties PhotoAlbumMock::sampleMetadata(bool portrait, const QString& localeIdentifier)
{
    SamplePoint point = kDefaultSamplePoint;
    for (const SamplePoint& candidate : kSamplePoints) {
        if (localeIdentifier == QLatin1String(candidate.localeIdentifier))
            point = candidate;
    }
    const SampleExposure& exposure = portrait ? kPortraitExposure : kLandscapeExposure;
    return {
        {key::kPixelHeight, kPixelHeight},
        {key::kPixelWidth, kPixelWidth},
        {QStringLiteral("ColorModel"), QString::fromLatin1(kColorModel)},
        {key::kOrientation, kOrientation},
        {QStringLiteral("ProfileName"), QString::fromLatin1(kProfileName)},
        {QStringLiteral("Depth"), kDepth},
        {key::kTIFFDictionary,
         QVariantMap{
             {key::kModel, QString::fromLatin1(kLoggedPhotoModel)},
             {key::kOrientation, kOrientation},
         }},
        {key::kExifDictionary,
         QVariantMap{
             {key::kColorSpace, kColorSpace},
             {key::kExifVersion, QVariantList{kExifVersionMajor, kExifVersionMinor}},
             {key::kExposureBiasValue, exposure.biasStops},
             {key::kExposureTime, exposure.exposureTimeS},
             {key::kFNumber, exposure.fNumber},
             {key::kISOSpeed, exposure.iso},
             {key::kISOSpeedRatings, QVariantList{exposure.iso}},
             {key::kPixelXDimension, kPixelWidth},
             {key::kPixelYDimension, kPixelHeight},
         }},
        {key::kGPSDictionary,
         QVariantMap{
             {key::kAltitude, kAltitudeM},
             {key::kLatitude, point.latitude + randomIn(kLatitudeOffsetMin, kOffsetMax)},
             {key::kLatitudeRef, QStringLiteral("N")},
             {key::kLongitude, point.longitude + randomIn(kLongitudeOffsetMin, kOffsetMax)},
             {key::kLongitudeRef, QStringLiteral("E")},
         }},
    };
}

} // namespace kestrum
