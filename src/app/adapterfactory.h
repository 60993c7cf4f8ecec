#pragma once

#include <memory>

namespace kestrum {

class CaptureDevice;
class Clock;
class DesktopServices;
class FaceAnalyser;
class Haptics;
class ImageMetadata;
class MailComposer;
class PhotoLibrary;
class PositionSource;
class PreferenceStore;
class ReverseGeocoder;
class TileSource;
class UserDesktopEntry;
class WindowIcon;

/// Makes the platform adapters the app starts on. The start-up asks for each adapter
/// when it builds the service that needs it, so the calls come in the order of the
/// start-up sequence. The app uses `LinuxAdapterFactory`; tests hand in fakes.
class AdapterFactory {
public:
    virtual ~AdapterFactory() = default;

    virtual std::unique_ptr<PreferenceStore> preferenceStore() = 0;
    virtual std::unique_ptr<Clock> clock() = 0;
    virtual std::unique_ptr<ImageMetadata> imageMetadata() = 0;
    virtual std::unique_ptr<DesktopServices> desktopServices() = 0;
    /// `links` opens the mails; it outlives the composer.
    virtual std::unique_ptr<MailComposer> mailComposer(DesktopServices& links) = 0;
    virtual std::unique_ptr<Haptics> haptics() = 0;
    /// The launcher's quick actions and the app icon.
    virtual std::unique_ptr<UserDesktopEntry> userDesktopEntry() = 0;
    /// The icon of the app's windows.
    virtual std::unique_ptr<WindowIcon> windowIcon() = 0;
    virtual std::unique_ptr<PositionSource> positionSource() = 0;
    /// `clock` paces the requests; it outlives the geocoder.
    virtual std::unique_ptr<ReverseGeocoder> reverseGeocoder(Clock& clock) = 0;
    /// The map's tiles; may be null (maps show their background only).
    virtual std::unique_ptr<TileSource> tileSource() = 0;
    /// The live camera's device (not asked for on mock data).
    virtual std::unique_ptr<CaptureDevice> captureDevice() = 0;
    /// `metadata` outlives the library.
    virtual std::unique_ptr<PhotoLibrary> photoLibrary(const ImageMetadata& metadata) = 0;
    /// The face analysis; throws FaceAnalyserException when its model is missing.
    virtual std::shared_ptr<FaceAnalyser> faceAnalyser() = 0;
};

} // namespace kestrum
