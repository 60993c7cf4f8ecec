#include "commandline.h"
#include "commands.h"

#include "album/photoalbum.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "platform/photos/folderphotolibrary.h"

#include <QFile>
#include <QFileInfo>

namespace kestrum::cli {

int runRead(const QStringList& words)
{
    const CommandLine line(words, {});
    line.expectWords(1);
    const QString path = line.word(0, "FILE");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure("cannot read " + path.toStdString() + ": " +
                      file.errorString().toStdString());

    // Read as the album reads a photo of its own, dated as the folder library dates it.
    const Exiv2ImageMetadata metadata;
    const auto date = FolderPhotoLibrary::creationDate(path, metadata);
    const auto exposure = date ? PhotoAlbum::loggedExposure(QFileInfo(path).fileName(), *date,
                                                            file.readAll(), metadata)
                               : std::nullopt;
    if (!exposure)
        throw Failure("not a logged photo");
    printLine(jsonLoggedExposure(*exposure));
    return 0;
}

} // namespace kestrum::cli
