#include "quickaction.h"

namespace kestrum {

namespace {
const QString kTypePrefix = QStringLiteral("--quick-action=");
const QString kInfoPrefix = QStringLiteral("--quick-action-info=");
} // namespace

QStringList QuickAction::toArguments() const
{
    QStringList arguments{kTypePrefix + type};
    for (auto entry = userInfo.cbegin(); entry != userInfo.cend(); ++entry)
        arguments.append(kInfoPrefix + entry.key() + u'=' + entry.value().toString());
    return arguments;
}

std::optional<QuickAction> QuickAction::fromArguments(const QStringList& arguments)
{
    std::optional<QuickAction> action;
    QVariantMap userInfo;
    for (const QString& argument : arguments) {
        if (argument.startsWith(kTypePrefix)) {
            action.emplace();
            action->type = argument.mid(kTypePrefix.size());
        } else if (argument.startsWith(kInfoPrefix)) {
            const QString entry = argument.mid(kInfoPrefix.size());
            const qsizetype equals = entry.indexOf(u'=');
            if (equals > 0)
                userInfo.insert(entry.left(equals), entry.mid(equals + 1));
        }
    }
    if (action)
        action->userInfo = userInfo;
    return action;
}

} // namespace kestrum
