#include "loggedphotometadata.h"

#include <charconv>
#include <string>

namespace kestrum {

namespace {
namespace key = imageproperty;
constexpr int kExifVersionMajor = 2;
constexpr int kExifVersionMinor = 3;
} // namespace

std::optional<double> parseDisplayNumber(const QString& text)
{
    const std::string bytes = text.toStdString();
    double value = 0.0;
    const char* end = bytes.data() + bytes.size();
    const auto [stop, error] = std::from_chars(bytes.data(), end, value);
    if (bytes.empty() || error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

double exposureTime(const QString& speedDisplay)
{
    const bool seconds = speedDisplay.endsWith(QLatin1Char('s'));
    const auto number = parseDisplayNumber(QString(speedDisplay).remove(QLatin1Char('s')));
    if (!number)
        return 0.0;
    return seconds ? *number : 1.0 / *number;
}

ImageProperties loggedPhotoMetadata(const ISO& iso, const Aperture& aperture,
                                    const ShutterSpeed& speed, const Compensation& compensation,
                                    const std::optional<Location>& location)
{
    const double isoSpeed = parseDisplayNumber(iso.display).value_or(0.0);
    ImageProperties properties{
        {key::kExifDictionary,
         QVariantMap{
             {key::kExifVersion, QVariantList{kExifVersionMajor, kExifVersionMinor}},
             {key::kISOSpeed, isoSpeed},
             {key::kISOSpeedRatings, QVariantList{isoSpeed}},
             {key::kFNumber, parseDisplayNumber(aperture.display).value_or(0.0)},
             {key::kExposureTime, exposureTime(speed.display)},
             {key::kExposureBiasValue, compensation.value},
         }},
        {key::kTIFFDictionary, QVariantMap{{key::kModel, QString::fromLatin1(kLoggedPhotoModel)}}},
    };
    if (location) {
        properties.insert(key::kGPSDictionary, QVariantMap{
                                                   {key::kAltitude, location->altitude},
                                                   {key::kLongitude, location->longitude},
                                                   {key::kLatitude, location->latitude},
                                               });
    }
    return properties;
}

} // namespace kestrum
