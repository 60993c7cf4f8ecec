#include "profilequickactions.h"

#include "settings/settings.h"

namespace kestrum::ProfileQuickActions {

QList<QuickAction> forProfiles(const QList<Profile>& profiles)
{
    QList<QuickAction> actions;
    actions.reserve(profiles.size());
    for (const Profile& profile : profiles) {
        actions.append({QString::fromLatin1(kType), profile.name,
                        QVariantMap{{QString::fromLatin1(kProfileIDKey), profile.id}}});
    }
    return actions;
}

bool perform(Settings& settings, const QuickAction& action)
{
    const QVariant id = action.userInfo.value(QString::fromLatin1(kProfileIDKey));
    if (action.type != QLatin1String(kType) || id.typeId() != QMetaType::QString)
        return false;
    return settings.switchProfile(id.toString());
}

} // namespace kestrum::ProfileQuickActions
