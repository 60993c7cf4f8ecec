#pragma once

namespace kestrum {

/// Whether the app may use the camera.
enum class AuthorizationStatus {
    notDetermined, ///< not asked yet
    restricted,    ///< the system does not allow it
    denied,        ///< the user said no
    authorized,
};

} // namespace kestrum
