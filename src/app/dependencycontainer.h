#pragma once

#include <memory>

namespace kestrum {

class PreferenceStore;
class ProfileSettings;

/// The one process-wide owner of the app's long-lived services. It is filled once
/// at start-up by the composition root and read by the QML-facing objects; nothing
/// is replaced afterwards. Reading a service before it is filled stops the program.
class DependencyContainer {
public:
    static DependencyContainer& shared();

    PreferenceStore& preferenceStore() const;
    ProfileSettings& profileSettings() const;

    void fill(std::unique_ptr<PreferenceStore> store,
              std::unique_ptr<ProfileSettings> profileSettings);

private:
    DependencyContainer() = default;

    std::unique_ptr<PreferenceStore> m_preferenceStore;
    std::unique_ptr<ProfileSettings> m_profileSettings;
};

} // namespace kestrum
