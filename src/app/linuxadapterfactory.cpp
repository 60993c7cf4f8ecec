#include "linuxadapterfactory.h"

#include "platform/camera/capturedevice.h"
#include "platform/camera/capturedevicechoice.h"
#include "platform/camera/faceanalyseropencv.h"
#include "platform/desktop/feedbackdhaptics.h"
#include "platform/desktop/qtwindowicon.h"
#include "platform/desktop/userdesktopentry.h"
#include "platform/desktop/xdgdesktopservices.h"
#include "platform/desktop/xdgmailcomposer.h"
#include "platform/location/nominatimgeocoder.h"
#include "platform/location/positionsourcechoice.h"
#include "platform/location/qtpositionsource.h"
#include "platform/map/networktilesource.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "platform/photos/folderphotolibrary.h"
#include "platform/store/inipreferencestore.h"
#include "platform/time/systemclock.h"

#include <QCoreApplication>
#include <QDBusConnection>

namespace kestrum {

std::unique_ptr<PreferenceStore> LinuxAdapterFactory::preferenceStore()
{
    return std::make_unique<IniPreferenceStore>(IniPreferenceStore::defaultFilePath());
}

std::unique_ptr<Clock> LinuxAdapterFactory::clock()
{
    return std::make_unique<SystemClock>();
}

std::unique_ptr<ImageMetadata> LinuxAdapterFactory::imageMetadata()
{
    return std::make_unique<Exiv2ImageMetadata>();
}

std::unique_ptr<DesktopServices> LinuxAdapterFactory::desktopServices()
{
    return std::make_unique<XdgDesktopServices>();
}

std::unique_ptr<MailComposer> LinuxAdapterFactory::mailComposer(DesktopServices& links)
{
    return std::make_unique<XdgMailComposer>(links);
}

std::unique_ptr<Haptics> LinuxAdapterFactory::haptics()
{
    return std::make_unique<FeedbackdHaptics>(QDBusConnection::sessionBus(),
                                              QStringLiteral(KESTRUM_APP_ID));
}

std::unique_ptr<UserDesktopEntry> LinuxAdapterFactory::userDesktopEntry()
{
    return std::make_unique<UserDesktopEntry>(QCoreApplication::applicationFilePath());
}

std::unique_ptr<WindowIcon> LinuxAdapterFactory::windowIcon()
{
    return std::make_unique<QtWindowIcon>();
}

std::unique_ptr<PositionSource> LinuxAdapterFactory::positionSource()
{
    return std::make_unique<QtPositionSource>(PositionSourceChoice::fromEnvironment());
}

std::unique_ptr<ReverseGeocoder> LinuxAdapterFactory::reverseGeocoder(Clock& clock)
{
    return std::make_unique<NominatimGeocoder>(NominatimGeocoder::Options::fromEnvironment(),
                                               clock);
}

std::unique_ptr<TileSource> LinuxAdapterFactory::tileSource()
{
    return std::make_unique<NetworkTileSource>(NetworkTileSource::Options::fromEnvironment());
}

std::unique_ptr<CaptureDevice> LinuxAdapterFactory::captureDevice()
{
    return CaptureDeviceChoice::fromEnvironment().make();
}

std::unique_ptr<PhotoLibrary> LinuxAdapterFactory::photoLibrary(const ImageMetadata& metadata)
{
    return std::make_unique<FolderPhotoLibrary>(FolderPhotoLibrary::defaultRootPath(), metadata);
}

std::shared_ptr<FaceAnalyser> LinuxAdapterFactory::faceAnalyser()
{
    return std::make_shared<FaceAnalyserOpenCv>();
}

} // namespace kestrum
