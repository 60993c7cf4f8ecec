#include "mode.h"

namespace kestrum {

QString rawValue(Mode mode)
{
    switch (mode) {
    case Mode::tv:
        return QStringLiteral("tv");
    case Mode::m:
        return QStringLiteral("m");
    case Mode::av:
        break;
    }
    return QStringLiteral("av");
}

std::optional<Mode> modeFromRawValue(QStringView text)
{
    if (text == u"av")
        return Mode::av;
    if (text == u"tv")
        return Mode::tv;
    if (text == u"m")
        return Mode::m;
    return std::nullopt;
}

Mode modeOrAperturePriority(const std::optional<QString>& stored)
{
    if (!stored)
        return Mode::av;
    return modeFromRawValue(*stored).value_or(Mode::av);
}

} // namespace kestrum
