#include "dependencycontainer.h"

#include "platform/preferencestore.h"
#include "settings/profilesettings.h"

#include <QtGlobal>

namespace kestrum {

namespace {
template <typename T> T& require(const std::unique_ptr<T>& service, const char* name)
{
    if (!service)
        qFatal("the dependency container was read before it was filled (%s)", name);
    return *service;
}
} // namespace

DependencyContainer& DependencyContainer::shared()
{
    static DependencyContainer container;
    return container;
}

PreferenceStore& DependencyContainer::preferenceStore() const
{
    return require(m_preferenceStore, "preference store");
}

ProfileSettings& DependencyContainer::profileSettings() const
{
    return require(m_profileSettings, "profile settings");
}

void DependencyContainer::fill(std::unique_ptr<PreferenceStore> store,
                               std::unique_ptr<ProfileSettings> profileSettings)
{
    m_preferenceStore = std::move(store);
    m_profileSettings = std::move(profileSettings);
}

} // namespace kestrum
