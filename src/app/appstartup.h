#pragma once

#include <QStringList>

#include <optional>

namespace kestrum {

class DependencyContainer;

/// How the app starts: which camera and album it uses and which launch arguments
/// it was given.
struct StartupOptions {
    QStringList launchArguments;
    /// Set when running on mock data ("SIMULATOR_MODEL_IDENTIFIER"): the mock camera,
    /// with the zoom presets of that simulated device.
    std::optional<QString> simulatedModel;
    /// An automated screenshot run: an unknown simulated device is refused.
    bool screenshotRun = false;

    /// Reads the options from the process environment and arguments.
    static StartupOptions fromEnvironment(const QStringList& arguments);
};

/// Fills the container: settings on the preference store, the location manager, the
/// camera (the mock on mock data, else the live camera with the face detector and the
/// metadata provider of logged photos), the calculator and the calculation controller
/// following the current profile, and the photo album (the mock album on mock data).
void fillDependencies(DependencyContainer& container, const StartupOptions& options);

} // namespace kestrum
