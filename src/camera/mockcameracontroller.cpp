#include "mockcameracontroller.h"

#include <QtGlobal>

namespace kestrum {

namespace {

// The mock behaves like a camera whose factor 1 is the ultra-wide lens.
constexpr bool kHalve = true;

ZoomOption preset(float factor)
{
    return ZoomOption::make(factor, kHalve);
}

QList<ZoomOption> presetsFor(const std::optional<QString>& modelIdentifier, bool screenshotRun)
{
    const QString model = modelIdentifier.value_or(QString());
    if (model == u"iPhone14,3")
        return {preset(1.0f), preset(2.0f), preset(6.0f)};
    if (model == u"iPhone10,5")
        return {preset(2.0f), preset(4.0f)};
    if (model == u"iPad13,10")
        return {preset(1.0f), preset(2.0f)};
    if (model == u"iPad7,1")
        return {preset(2.0f)};
    if (screenshotRun)
        qFatal("Unsupported Simulator Device");
    return {preset(2.0f)};
}

} // namespace

MockCameraController::MockCameraController(AuthorizationStatus status,
                                           const std::optional<QString>& modelIdentifier,
                                           bool screenshotRun, double lightValue, QObject* parent)
    : QObject(parent)
    , m_zoomOptions(presetsFor(modelIdentifier, screenshotRun))
    , m_currentZoomOption(preset(2.0f))
    , m_authorizationStatus(status)
    , m_lv(new LightValueSubject(lightValue, this))
{}

void MockCameraController::setInteractiveZoomFactor(float factor)
{
    emit objectWillChange();
    m_interactiveZoomFactor = factor;
}

void MockCameraController::setCurrentZoomOption(const std::optional<ZoomOption>& option)
{
    emit objectWillChange();
    m_currentZoomOption = option;
}

QFuture<void> MockCameraController::logExposure()
{
    return QtFuture::makeReadyFuture();
}

void MockCameraController::setGetMetadata(MetadataProvider provider)
{
    m_getMetadata = std::move(provider);
}

LightValueStream MockCameraController::lv() const
{
    return {m_lv, LightValueStream::Filter::none};
}

} // namespace kestrum
