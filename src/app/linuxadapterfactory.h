#pragma once

#include "adapterfactory.h"

namespace kestrum {

/// The adapters of a Linux desktop or phone: the INI preference store, the system clock,
/// Exiv2, the freedesktop links, mail program and user desktop entry, Qt's window icon,
/// feedbackd on the session bus, Qt Positioning with the Nominatim geocoder, OpenStreetMap
/// tiles over HTTP, the camera that `KESTRUM_CAMERA` chooses, the photo folder and
/// OpenCV's face cascades.
class LinuxAdapterFactory final : public AdapterFactory {
public:
    std::unique_ptr<PreferenceStore> preferenceStore() override;
    std::unique_ptr<Clock> clock() override;
    std::unique_ptr<ImageMetadata> imageMetadata() override;
    std::unique_ptr<DesktopServices> desktopServices() override;
    std::unique_ptr<MailComposer> mailComposer(DesktopServices& links) override;
    std::unique_ptr<Haptics> haptics() override;
    std::unique_ptr<UserDesktopEntry> userDesktopEntry() override;
    std::unique_ptr<WindowIcon> windowIcon() override;
    std::unique_ptr<PositionSource> positionSource() override;
    std::unique_ptr<ReverseGeocoder> reverseGeocoder(Clock& clock) override;
    std::unique_ptr<TileSource> tileSource() override;
    std::unique_ptr<CaptureDevice> captureDevice() override;
    std::unique_ptr<PhotoLibrary> photoLibrary(const ImageMetadata& metadata) override;
    std::shared_ptr<FaceAnalyser> faceAnalyser() override;
};

} // namespace kestrum
