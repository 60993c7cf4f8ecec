#include "appicons.h"

#include <QtGlobal>

#include <array>

namespace kestrum::AppIcons {

namespace {

struct Icon {
    const char* name;    // the colouring: the drawing's name and the alternate name
    const char* titleId; // catalogue id of the title
};

constexpr std::array kIcons{
    Icon{"Light", QT_TRID_NOOP("settings.icon.light")},
    Icon{"Dark", QT_TRID_NOOP("settings.icon.dark")},
    Icon{"Yellow", QT_TRID_NOOP("settings.icon.yellow")},
    Icon{"Classic", QT_TRID_NOOP("settings.icon.classic")},
};

bool offered(int row)
{
    return row >= 0 && row < count();
}

} // namespace

int count()
{
    return int(kIcons.size());
}

int rowOf(const QString& alternateName)
{
    // Light is the app's own icon: it has no alternate name of its own.
    for (int row = kLightRow + 1; row < count(); ++row) {
        if (alternateName == QLatin1String(kIcons[row].name))
            return row;
    }
    return kLightRow;
}

std::optional<QString> alternateName(int row)
{
    if (!offered(row))
        return std::nullopt;
    return row == kLightRow ? QString() : QString::fromLatin1(kIcons[row].name);
}

QString title(int row)
{
    return offered(row) ? qtTrId(kIcons[row].titleId) : QString();
}

QString picturePath(int row)
{
    const Icon& icon = kIcons[offered(row) ? row : kLightRow];
    return QStringLiteral(":/kestrum/icons/") + QLatin1String(icon.name) + QStringLiteral(".svg");
}

} // namespace kestrum::AppIcons
