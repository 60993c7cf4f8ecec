#include "commandline.h"
#include "commands.h"
#include "json.h"

#include "album/loggedphotometadata.h"
#include "album/photoalbum.h"
#include "awaitfuture.h"
#include "exposure/shortestdecimaltext.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "platform/photos/folderphotolibrary.h"
#include "platform/photos/loggedphotofile.h"

#include <QDir>
#include <QImageReader>

namespace kestrum::cli {

namespace {

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

QImage image(const QString& imagePath)
{
    QImageReader reader(imagePath);
    const QImage image = reader.read();
    if (image.isNull())
        throw Failure("cannot read " + imagePath.toStdString() + ": " +
                      reader.errorString().toStdString());
    return image;
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
    QString temporaryPath;
    try {
        temporaryPath =
            writeLoggedPhotoFile(image(imagePath), properties, metadata, QDir::tempPath());
    } catch (const LoggedPhotoFileException& error) {
        throw Failure(error.what());
    }

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
