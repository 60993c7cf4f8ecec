#pragma once

namespace kestrum {

/// A point on the earth's surface.
struct Coordinate {
    double latitude = 0.0;  ///< degrees, south negative
    double longitude = 0.0; ///< degrees, west negative

    friend bool operator==(const Coordinate&, const Coordinate&) = default;
};

} // namespace kestrum
