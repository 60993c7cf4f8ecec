#include "photolibrary.h"

namespace kestrum {

namespace {

const char* describe(PhotoLibrary::Error error)
{
    switch (error) {
    case PhotoLibrary::Error::unreadableFile:
        return "the photo could not be read";
    case PhotoLibrary::Error::notAnImage:
        return "the file is not an image";
    case PhotoLibrary::Error::albumMissing:
        return "the album does not exist";
    case PhotoLibrary::Error::albumNotMade:
        return "the album could not be created";
    case PhotoLibrary::Error::writeFailed:
        return "the photo could not be stored";
    }
    return "the photo library failed";
}

} // namespace

PhotoLibraryException::PhotoLibraryException(PhotoLibrary::Error error, const QString& detail)
    : m_error(error)
    , m_message(describe(error))
{
    if (!detail.isEmpty())
        m_message += ": " + detail.toStdString();
}

} // namespace kestrum
