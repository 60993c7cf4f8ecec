#pragma once

#include "platform/desktop/quickaction.h"

#include <QPointer>
#include <QStringList>

#include <optional>

namespace kestrum {

class AdapterFactory;
class DependencyContainer;
class LocationManager;

/// How the app starts: which camera and album it uses, which launch arguments it was
/// given, and the quick action that started it.
struct StartupOptions {
    QStringList launchArguments;
    /// Set when running on mock data ("SIMULATOR_MODEL_IDENTIFIER"): the mock camera,
    /// with the zoom presets of that simulated device, and the mock album.
    std::optional<QString> simulatedModel;
    /// An automated screenshot run: an unknown simulated device is refused.
    bool screenshotRun = false;
    /// The launcher's quick action in the arguments, if the app was started from one.
    std::optional<QuickAction> quickAction;

    /// Reads the options from the process environment and `arguments`.
    static StartupOptions fromEnvironment(const QStringList& arguments);
};

/// Fills the container in the order of the start-up sequence: settings on the
/// preference store, the location manager, the camera (the mock on mock data, else the
/// live camera), the calculator and the calculation controller following the current
/// profile, on the live camera the metadata provider of logged photos, the photo album
/// (the mock album on mock data) and the face detector; the platform's adapters come
/// first. Then starts the live camera.
///
/// A logged photo's position comes from `photoLocation`, the start-up's own location
/// manager, for as long as it exists.
void fillDependencies(DependencyContainer& container, const StartupOptions& options,
                      AdapterFactory& adapters, QPointer<LocationManager> photoLocation);

} // namespace kestrum
