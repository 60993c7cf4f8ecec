#pragma once

// Photos for the album tests, drawn and tagged here.

#include "album/loggedphotometadata.h"
#include "album/photoalbum.h"
#include "platform/photos/exiv2imagemetadata.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>

namespace kestrum::test {

/// A 64 × 48 JPEG without metadata.
inline QByteArray plainJpeg()
{
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", 90);
    return bytes;
}

/// A JPEG that barely compresses.
inline QByteArray noisyJpeg(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator random(size.width());
    for (int y = 0; y < size.height(); ++y) {
        auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            line[x] = random.generate() | 0xFF000000u;
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", 100);
    return bytes;
}

/// The metadata the meter writes for these display texts.
inline ImageProperties exposureMetadata(const QString& iso, const QString& aperture,
                                        const QString& speed, double compensation,
                                        std::optional<Location> location = std::nullopt)
{
    return loggedPhotoMetadata(ISO{Fraction::full, 0, iso}, Aperture{Fraction::full, 0, aperture},
                               ShutterSpeed{Fraction::full, 0, speed},
                               Compensation{Fraction::full, compensation, QString()}, location);
}

inline QByteArray loggedJpeg(const ImageMetadata& metadata, const ImageProperties& properties)
{
    return metadata.merged(plainJpeg(), properties).value_or(QByteArray());
}

/// The album's photos by identifier, as it lists them.
inline QStringList identifiers(const PhotoAlbum& album)
{
    QStringList result;
    for (const auto& exposure : album.loggedExposures())
        result.append(exposure.localIdentifier());
    return result;
}

inline bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace kestrum::test
