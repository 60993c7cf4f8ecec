#include "qtwindowicon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIcon>

namespace kestrum {

bool QtWindowIcon::show(const QString& picturePath)
{
    // QIcon draws a missing file as nothing at all: keep the icon there is instead.
    if (!QFile::exists(picturePath)) {
        qWarning("no window icon at %s", qPrintable(picturePath));
        return false;
    }
    QGuiApplication::setWindowIcon(QIcon(picturePath));
    return true;
}

} // namespace kestrum
