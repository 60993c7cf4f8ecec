#include "commandline.h"
#include "commands.h"
#include "json.h"

#include "album/loggedphotometadata.h"
#include "album/photoalbum.h"
#include "exposure/shortestdecimaltext.h"
#include "platform/awaitfuture.h"
#include "platform/exiv2imagemetadata.h"
#include "platform/folderphotolibrary.h"

#include <QBuffer>
#include <QDir>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>

namespace kestrum::cli {

namespace {

constexpr auto kTemporaryFileName = "Kestrum.jpeg";
constexpr int kJpegQuality = 100;

QString requiredText(const CommandLine& line, const char* name)
{
    const auto text = line.option(QString::fromLatin1(name));
    if (!text)
        throw UsageError(std::string("missing --") + name);
    return *text;
}

std::optional<Location> location(const CommandLine& line)
{
    const auto latitude = line.number(QStringLiteral("latitude"));
    const auto longitude = line.number(QStringLiteral("longitude"));
    const auto altitude = line.number(QStringLiteral("altitude"));
    if (!latitude && !longitude && !altitude)
        return std::nullopt;
    if (!latitude || !longitude)
        throw UsageError("--latitude and --longitude go together");
    return Location{*latitude, *longitude, altitude.value_or(0.0)};
}

// The frame as the camera would hand it over: a JPEG of the highest quality.
QByteArray jpeg(const QString& imagePath)
{
    QImageReader reader(imagePath);
    const QImage image = reader.read();
    if (image.isNull())
        throw Failure("cannot read " + imagePath.toStdString() + ": " +
                      reader.errorString().toStdString());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(kJpegQuality);
    if (!writer.write(image))
        throw Failure("cannot encode the image: " + writer.errorString().toStdString());
    return bytes;
}

QString writeTemporaryFile(const QByteArray& bytes)
{
    const QString path = QDir::temp().filePath(QLatin1String(kTemporaryFileName));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw Failure("cannot write " + path.toStdString() + ": " +
                      file.errorString().toStdString());
    return path;
}

} // namespace

int runLog(const QStringList& words)
{
    const CommandLine line(words, {QStringLiteral("iso"), QStringLiteral("aperture"),
                                   QStringLiteral("speed"), QStringLiteral("compensation"),
                                   QStringLiteral("latitude"), QStringLiteral("longitude"),
                                   QStringLiteral("altitude")});
    line.expectWords(1);
    const QString imagePath = line.word(0, "IMAGE");
    const QString isoText = requiredText(line, "iso");
    const QString apertureText = requiredText(line, "aperture");
    const QString speedText = requiredText(line, "speed");
    const auto compensation = line.number(QStringLiteral("compensation"));
    if (!compensation)
        throw UsageError("missing --compensation");

    const ImageProperties properties = loggedPhotoMetadata(
        ISO{Fraction::full, parseDisplayNumber(isoText).value_or(0.0), isoText},
        Aperture{Fraction::full, parseDisplayNumber(apertureText).value_or(0.0), apertureText},
        ShutterSpeed{Fraction::full, exposureTime(speedText), speedText},
        Compensation{Fraction::full, *compensation, shortestDecimalText(*compensation)},
        location(line));

    const Exiv2ImageMetadata metadata;
    const auto photo = metadata.merged(jpeg(imagePath), properties);
    if (!photo)
        throw Failure("cannot write the metadata into the photo");
    const QString temporaryPath = writeTemporaryFile(*photo);

    FolderPhotoLibrary library(FolderPhotoLibrary::defaultRootPath(), metadata);
    PhotoAlbum album(library, metadata);
    try {
        const QString localIdentifier = awaitFuture(album.save(QUrl::fromLocalFile(temporaryPath)));
        printLine(jsonObject({{QStringLiteral("localIdentifier"), jsonString(localIdentifier)}}));
    } catch (const PhotoAlbumException& error) {
        throw Failure(error.what());
    } catch (const PhotoLibraryException& error) {
        throw Failure(error.what());
    }
    return 0;
}

} // namespace kestrum::cli
