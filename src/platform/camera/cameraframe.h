#pragma once

#include <QImage>

#include <chrono>
#include <cmath>
#include <optional>

namespace kestrum {

/// One video frame as the camera delivered it, in the sensor's orientation. The image is
/// implicitly shared, so passing a frame on is cheap.
struct CameraFrame {
    /// Which way the image must be turned to stand upright, as photo files mark it: `right`
    /// is a sensor mounted a quarter turn off, as in most phones, whose frames a viewer
    /// turns 90° clockwise.
    enum class Orientation { up, right, down, left };

    QImage image;
    /// When the frame was captured, on the capture clock; absent when the device
    /// gave no valid time stamp.
    std::optional<std::chrono::microseconds> presentationTime;
    Orientation orientation = Orientation::up;

    /// The orientation of a sensor mounted `degrees` clockwise off upright, to the nearest
    /// quarter turn.
    static Orientation orientationForRotation(double degrees)
    {
        if (!std::isfinite(degrees))
            return Orientation::up;
        const long quarters = std::lround(std::fmod(degrees, 360.0) / 90.0) % 4;
        constexpr Orientation kByQuarter[] = {Orientation::up, Orientation::right,
                                              Orientation::down, Orientation::left};
        return kByQuarter[quarters < 0 ? quarters + 4 : quarters];
    }

    /// The EXIF/TIFF Orientation value of `orientation` (1, 6, 3 or 8).
    static constexpr int exifOrientation(Orientation orientation)
    {
        constexpr int kExif[] = {1, 6, 3, 8};
        return kExif[int(orientation)];
    }
};

} // namespace kestrum
