#pragma once

#include "encodedimage.h"
#include "platform/location/coordinate.h"
#include "platform/photos/imageproperties.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace kestrum {

/// One logged photo as read back from its metadata, with the texts the browser shows.
///
/// Read from a photo's properties: "{Exif}" must hold "ISOSpeed" as an integer and
/// "ExposureBiasValue", "FNumber" and "ExposureTime" as numbers, or the photo is not a
/// logged exposure. The texts:
/// - iso: the integer, "200";
/// - aperture: the shortest round-trip text of the f-number, "2.8", "11.0";
/// - speed: "1/n" + "s" below one second, n the reciprocal truncated toward zero
///   ("1/500s"), else the shortest text of the time + "s" ("2.0s");
/// - compensation: "+0.33 EV", exactly "±0 EV" for zero, "-0.7 EV".
/// In a photo the meter wrote (TIFF "Model" "Kestrum Light Meter"), an exposure time whose
/// reciprocal is not finite or does not fit 64 bits (0 among them) stops the program: the
/// meter never writes one. Any other photo with a time that has no speed text (zero,
/// negative, too short) is not a logged exposure.
/// The coordinate is "{GPS}" "Latitude" and "Longitude" when both are numbers.
class LoggedExposure {
public:
    /// The exposure of the photo `localIdentifier`, or nothing when `properties` lack the
    /// exposure entries.
    static std::optional<LoggedExposure> fromProperties(QString localIdentifier,
                                                        EncodedImage previewImage, QDateTime date,
                                                        const ImageProperties& properties);

    /// The library's identifier of the photo: the exposure's identity.
    const QString& localIdentifier() const { return m_localIdentifier; }
    const EncodedImage& previewImage() const { return m_previewImage; }
    void setPreviewImage(EncodedImage image) { m_previewImage = std::move(image); }
    const QString& aperture() const { return m_aperture; }
    const QString& speed() const { return m_speed; }
    const QString& iso() const { return m_iso; }
    const QString& compensation() const { return m_compensation; }
    /// When the photo was taken, as the library dates it.
    const QDateTime& date() const { return m_date; }
    const std::optional<Coordinate>& coordinate() const { return m_coordinate; }
    void setCoordinate(std::optional<Coordinate> coordinate) { m_coordinate = coordinate; }

    /// The texts of an f-number, exposure time (seconds) and bias (stops), by the rules above.
    static QString apertureText(double fNumber);
    static QString speedText(double exposureTimeS);
    static QString compensationText(double biasStops);

private:
    LoggedExposure() = default;

    QString m_localIdentifier;
    EncodedImage m_previewImage;
    QString m_aperture;
    QString m_speed;
    QString m_iso;
    QString m_compensation;
    QDateTime m_date;
    std::optional<Coordinate> m_coordinate;
};

} // namespace kestrum
