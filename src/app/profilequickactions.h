#pragma once

#include "platform/desktop/quickaction.h"
#include "settings/profile.h"

#include <QList>

namespace kestrum {

class Settings;

/// The launcher's quick actions: one per profile, in list order, each switching to its
/// profile.
namespace ProfileQuickActions {

/// The type of a profile's quick action.
inline constexpr auto kType = "profile";
/// The key of the profile's id in a quick action's information.
inline constexpr auto kProfileIDKey = "profileID";

/// One action per profile: type "profile", the profile's name as the title, and its id
/// under "profileID".
QList<QuickAction> forProfiles(const QList<Profile>& profiles);

/// Performs `action`: when its type is "profile" and its information holds a text
/// "profileID" naming a listed profile, that profile becomes current. Returns whether
/// the action was handled; anything else (another type, no id, a profile deleted since
/// the actions were written) changes nothing.
bool perform(Settings& settings, const QuickAction& action);

} // namespace ProfileQuickActions

} // namespace kestrum
