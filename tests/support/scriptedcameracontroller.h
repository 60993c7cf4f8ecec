#pragma once

#include "camera/cameracontrollerprotocol.h"
#include "camera/lightvaluesubject.h"

#include <QObject>

namespace kestrum {

/// A camera whose light values are sent by its owner: for driving the meter from
/// recorded or synthetic values in tests, benchmarks and demonstrations. It counts
/// the readings it was asked for; its stream passes finite values that differ in
/// their tenths, as a live camera's does.
class ScriptedCameraController : public QObject, public CameraControllerProtocol {
    Q_OBJECT

public:
    explicit ScriptedCameraController(double initialLightValue = 0.0, QObject* parent = nullptr)
        : QObject(parent)
        , m_lv(new LightValueSubject(initialLightValue, this))
    {}

    /// Publishes a light value as a measurement would.
    void send(double lightValue) { m_lv->send(lightValue); }
    int measureCount() const { return m_measureCount; }

    QList<ZoomOption> zoomOptions() const override { return {ZoomOption::make(1.0f, false)}; }
    float interactiveZoomFactor() const override { return 1.0f; }
    void setInteractiveZoomFactor(float) override {}
    std::optional<ZoomOption> currentZoomOption() const override { return zoomOptions().first(); }
    void setCurrentZoomOption(const std::optional<ZoomOption>&) override {}
    void incrementZoom() override {}
    void decrementZoom() override {}
    void commitInteractiveZoom() override {}
    AuthorizationStatus authorizationStatus() const override
    {
        return AuthorizationStatus::authorized;
    }
    QObject* session() const override { return nullptr; }
    bool sessionIsRunning() const override { return true; }
    void requestPermission() override {}
    void setUp() override {}
    void measure() override { ++m_measureCount; }
    QFuture<void> logExposure() override { return QtFuture::makeReadyFuture(); }
    void expose(QPointF, ExposureMode, bool) override {}
    MetadataProvider getMetadata() const override { return {}; }
    void setGetMetadata(MetadataProvider) override {}
    LightValueStream lv() const override
    {
        return {m_lv, LightValueStream::Filter::finiteDistinctTenths};
    }

signals:
    void objectWillChange();

private:
    LightValueSubject* m_lv; // owned as a child
    int m_measureCount = 0;
};

} // namespace kestrum
