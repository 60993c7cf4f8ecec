#include "loggedphotofile.h"

#include "imagemetadata.h"

#include <QBuffer>
#include <QDir>
#include <QImageWriter>
#include <QSaveFile>

namespace kestrum {

namespace {
constexpr int kJpegQuality = 100;
} // namespace

QString writeLoggedPhotoFile(const QImage& image, const ImageProperties& properties,
                             const ImageMetadata& metadata, const QString& directory)
{
    if (image.isNull())
        throw LoggedPhotoFileException("the frame has no image");
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(kJpegQuality);
    if (!writer.write(image))
        throw LoggedPhotoFileException("cannot encode the image: " +
                                       writer.errorString().toStdString());
    const std::optional<QByteArray> withProperties = metadata.merged(jpeg, properties);
    if (!withProperties)
        throw LoggedPhotoFileException("cannot write the metadata into the photo");
    const QString path = QDir(directory).filePath(QLatin1String(kLoggedPhotoFileName));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(*withProperties) != withProperties->size() ||
        !file.commit())
        throw LoggedPhotoFileException("cannot write " + path.toStdString() + ": " +
                                       file.errorString().toStdString());
    return path;
}

} // namespace kestrum
