#pragma once

#include "cameracontrollerprotocol.h"

#include <QObject>

#include <memory>

namespace kestrum {

/// The one box through which the app uses a camera, live or mock.
///
/// Every member is a pure forward to the concrete controller, kept as one closure per
/// member. The one exception is `getMetadata`: the box keeps a copy of the
/// controller's provider taken when the box was built, while setting it goes through
/// to the controller, which is where logging reads it. The controller's
/// `objectWillChange` is the box's own.
class AnyCameraController : public QObject, public CameraControllerProtocol {
    Q_OBJECT

public:
    template <typename Controller>
    explicit AnyCameraController(std::shared_ptr<Controller> controller, QObject* parent = nullptr);

    QList<ZoomOption> zoomOptions() const override { return wrappedZoomOptions(); }
    float interactiveZoomFactor() const override { return wrappedInteractiveZoomFactor(); }
    void setInteractiveZoomFactor(float f) override { wrappedSetInteractiveZoomFactor(f); }
    std::optional<ZoomOption> currentZoomOption() const override
    {
        return wrappedCurrentZoomOption();
    }
    void setCurrentZoomOption(const std::optional<ZoomOption>& option) override
    {
        wrappedSetCurrentZoomOption(option);
    }
    void incrementZoom() override { wrappedIncrementZoom(); }
    void decrementZoom() override { wrappedDecrementZoom(); }
    void commitInteractiveZoom() override { wrappedCommitInteractiveZoom(); }
    AuthorizationStatus authorizationStatus() const override
    {
        return wrappedAuthorizationStatus();
    }
    QObject* session() const override { return wrappedSession(); }
    bool sessionIsRunning() const override { return wrappedSessionIsRunning(); }
    void requestPermission() override { wrappedRequestPermission(); }
    void setUp() override { wrappedSetUp(); }
    void measure() override { wrappedMeasure(); }
    QFuture<void> logExposure() override { return wrappedLogExposure(); }
    void expose(QPointF point, ExposureMode mode, bool monitor) override
    {
        wrappedExpose(point, mode, monitor);
    }
    MetadataProvider getMetadata() const override { return wrappedGetMetadata; }
    void setGetMetadata(MetadataProvider provider) override
    {
        wrappedSetGetMetadata(std::move(provider));
    }
    LightValueStream lv() const override { return wrappedGetLV(); }

signals:
    /// The concrete controller's announcement that its state is about to change.
    void objectWillChange();

private:
    std::function<AuthorizationStatus()> wrappedAuthorizationStatus;
    std::function<QObject*()> wrappedSession;
    std::function<bool()> wrappedSessionIsRunning;
    std::function<QList<ZoomOption>()> wrappedZoomOptions;
    std::function<float()> wrappedInteractiveZoomFactor;
    std::function<void()> wrappedIncrementZoom;
    std::function<void()> wrappedDecrementZoom;
    std::function<void(float)> wrappedSetInteractiveZoomFactor;
    std::function<void()> wrappedCommitInteractiveZoom;
    std::function<std::optional<ZoomOption>()> wrappedCurrentZoomOption;
    std::function<void(const std::optional<ZoomOption>&)> wrappedSetCurrentZoomOption;
    std::function<void()> wrappedRequestPermission;
    std::function<void()> wrappedSetUp;
    std::function<void()> wrappedMeasure;
    std::function<QFuture<void>()> wrappedLogExposure;
    MetadataProvider wrappedGetMetadata;
    std::function<void(MetadataProvider)> wrappedSetGetMetadata;
    std::function<LightValueStream()> wrappedGetLV;
    std::function<void(QPointF, ExposureMode, bool)> wrappedExpose;
};

template <typename Controller>
AnyCameraController::AnyCameraController(std::shared_ptr<Controller> c, QObject* parent)
    : QObject(parent)
    , wrappedAuthorizationStatus([c] { return c->authorizationStatus(); })
    , wrappedSession([c] { return c->session(); })
    , wrappedSessionIsRunning([c] { return c->sessionIsRunning(); })
    , wrappedZoomOptions([c] { return c->zoomOptions(); })
    , wrappedInteractiveZoomFactor([c] { return c->interactiveZoomFactor(); })
    , wrappedIncrementZoom([c] { c->incrementZoom(); })
    , wrappedDecrementZoom([c] { c->decrementZoom(); })
    , wrappedSetInteractiveZoomFactor([c](float f) { c->setInteractiveZoomFactor(f); })
    , wrappedCommitInteractiveZoom([c] { c->commitInteractiveZoom(); })
    , wrappedCurrentZoomOption([c] { return c->currentZoomOption(); })
    , wrappedSetCurrentZoomOption(
          [c](const std::optional<ZoomOption>& o) { c->setCurrentZoomOption(o); })
    , wrappedRequestPermission([c] { c->requestPermission(); })
    , wrappedSetUp([c] { c->setUp(); })
    , wrappedMeasure([c] { c->measure(); })
    , wrappedLogExposure([c] { return c->logExposure(); })
    , wrappedGetMetadata(c->getMetadata())
    , wrappedSetGetMetadata([c](MetadataProvider p) { c->setGetMetadata(std::move(p)); })
    , wrappedGetLV([c] { return c->lv(); })
    , wrappedExpose([c](QPointF p, ExposureMode m, bool s) { c->expose(p, m, s); })
{
    connect(c.get(), &Controller::objectWillChange, this, &AnyCameraController::objectWillChange);
}

} // namespace kestrum
