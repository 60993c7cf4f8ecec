#include "commandline.h"
#include "commands.h"
#include "json.h"

#include "album/photoalbum.h"
#include "awaitfuture.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "platform/photos/folderphotolibrary.h"

namespace kestrum::cli {

QString jsonLoggedExposure(const LoggedExposure& exposure)
{
    const auto& coordinate = exposure.coordinate();
    const QString null = QStringLiteral("null");
    return jsonObject({
        {QStringLiteral("localIdentifier"), jsonString(exposure.localIdentifier())},
        {QStringLiteral("aperture"), jsonString(exposure.aperture())},
        {QStringLiteral("speed"), jsonString(exposure.speed())},
        {QStringLiteral("iso"), jsonString(exposure.iso())},
        {QStringLiteral("compensation"), jsonString(exposure.compensation())},
        {QStringLiteral("date"), jsonString(exposure.date().toUTC().toString(Qt::ISODateWithMs))},
        {QStringLiteral("latitude"), coordinate ? jsonNumber(coordinate->latitude) : null},
        {QStringLiteral("longitude"), coordinate ? jsonNumber(coordinate->longitude) : null},
    });
}

int runAlbum(const QStringList& words)
{
    const CommandLine line(words, {});
    line.expectWords(0);

    const Exiv2ImageMetadata metadata;
    FolderPhotoLibrary library(FolderPhotoLibrary::defaultRootPath(), metadata);
    switch (library.authorizationStatus()) {
    case PhotoLibraryAuthorization::notDetermined: // no library yet, so no photos
        printLine(jsonArray({}));
        return 0;
    case PhotoLibraryAuthorization::authorized:
        break;
    default:
        throw Failure(PhotoAlbumException(PhotoAlbum::Error::noPermission).what());
    }

    // An authorized album starts loading as it is made; wait for that load.
    PhotoAlbum album(library, metadata);
    awaitFuture(album.loading());

    QStringList exposures;
    for (const LoggedExposure& exposure : album.loggedExposures())
        exposures.append(jsonLoggedExposure(exposure));
    printLine(jsonArray(exposures));
    return 0;
}

} // namespace kestrum::cli
