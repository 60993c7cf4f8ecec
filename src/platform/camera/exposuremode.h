#pragma once

namespace kestrum {

/// How the capture device keeps its exposure.
enum class ExposureMode {
    locked,                 ///< held where it is
    autoExpose,             ///< meters once at the point of interest, then holds
    continuousAutoExposure, ///< follows the scene
    custom,                 ///< set by hand
};

} // namespace kestrum
