#pragma once

namespace kestrum {

/// A position fix: where the device was when an exposure was logged.
struct Location {
    double latitude = 0.0;  ///< degrees, south negative
    double longitude = 0.0; ///< degrees, west negative
    double altitude = 0.0;  ///< metres above sea level

    friend bool operator==(const Location&, const Location&) = default;
};

} // namespace kestrum
