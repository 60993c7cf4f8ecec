#pragma once

#include <QString>

#include <memory>
#include <optional>

namespace kestrum {

class CaptureDevice;

/// Which capture device the app meters with.
///
/// Chosen by the environment variable `KESTRUM_CAMERA`:
/// - unset or empty: the system camera (Qt Multimedia for frames, V4L2 for exposure);
/// - `file:PATH`: recorded footage at PATH, a video, an image or a folder of images,
///   with its exposure in PATH.json (see FileCaptureDevice).
///
/// Any other value is reported and read as unset.
struct CaptureDeviceChoice {
    std::optional<QString> footagePath; ///< nothing: the system camera

    static CaptureDeviceChoice parse(const QString& value);
    static CaptureDeviceChoice fromEnvironment();

    /// The chosen device, as it reports itself: neither of these meters its own frames.
    std::unique_ptr<CaptureDevice> make() const;

    friend bool operator==(const CaptureDeviceChoice&, const CaptureDeviceChoice&) = default;
};

} // namespace kestrum
