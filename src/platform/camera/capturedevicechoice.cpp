#include "capturedevicechoice.h"

#include "filecapturedevice.h"
#include "qtcapturedevice.h"

#include <QLoggingCategory>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcCapture, "kestrum.platform.camera")

constexpr auto kVariable = "KESTRUM_CAMERA";
constexpr QStringView kFilePrefix = u"file:";
} // namespace

CaptureDeviceChoice CaptureDeviceChoice::parse(const QString& value)
{
    if (value.isEmpty())
        return {};
    if (value.startsWith(kFilePrefix) && value.size() > kFilePrefix.size())
        return {value.mid(kFilePrefix.size())};
    qCWarning(lcCapture) << kVariable << "is neither empty nor file:PATH:" << value
                         << "- using the system camera";
    return {};
}

CaptureDeviceChoice CaptureDeviceChoice::fromEnvironment()
{
    return parse(qEnvironmentVariable(kVariable));
}

std::unique_ptr<CaptureDevice> CaptureDeviceChoice::make() const
{
    if (footagePath)
        return std::make_unique<FileCaptureDevice>(*footagePath);
    return std::make_unique<QtCaptureDevice>();
}

} // namespace kestrum
