#pragma once

#include "cameracontrollerprotocol.h"
#include "lightvaluesubject.h"

#include <QObject>

#include <optional>

namespace kestrum {

/// A camera without hardware, for running the app on mock data and for screenshots:
/// it meters a constant light value, offers the zoom presets of the simulated device,
/// and does nothing when asked to set up, meter or log.
///
/// Zoom presets by simulated device (`modelIdentifier`): "iPhone14,3" 0.5, 1 and 3;
/// "iPhone10,5" 1 and 2; "iPad13,10" 0.5 and 1; anything else 1 only — except in an
/// automated screenshot run (`screenshotRun`), where an unknown device stops the program
/// so that it fails loudly instead of producing wrong pictures.
class MockCameraController : public QObject, public CameraControllerProtocol {
    Q_OBJECT

public:
    static constexpr double kLightValue = 10.0;

    MockCameraController(AuthorizationStatus status, const std::optional<QString>& modelIdentifier,
                         bool screenshotRun, double lightValue = kLightValue,
                         QObject* parent = nullptr);

    QList<ZoomOption> zoomOptions() const override { return m_zoomOptions; }
    float interactiveZoomFactor() const override { return m_interactiveZoomFactor; }
    void setInteractiveZoomFactor(float factor) override;
    std::optional<ZoomOption> currentZoomOption() const override { return m_currentZoomOption; }
    void setCurrentZoomOption(const std::optional<ZoomOption>& option) override;
    void incrementZoom() override {}
    void decrementZoom() override {}
    void commitInteractiveZoom() override {}
    AuthorizationStatus authorizationStatus() const override { return m_authorizationStatus; }
    QObject* session() const override { return nullptr; }
    bool sessionIsRunning() const override { return true; }
    void requestPermission() override {}
    void setUp() override {}
    void measure() override {}
    QFuture<void> logExposure() override;
    void expose(QPointF, ExposureMode, bool) override {}
    MetadataProvider getMetadata() const override { return m_getMetadata; }
    void setGetMetadata(MetadataProvider provider) override;
    LightValueStream lv() const override;

signals:
    void objectWillChange();

private:
    QList<ZoomOption> m_zoomOptions;
    float m_interactiveZoomFactor = 1.0f;
    std::optional<ZoomOption> m_currentZoomOption;
    AuthorizationStatus m_authorizationStatus;
    MetadataProvider m_getMetadata;
    LightValueSubject* m_lv; // owned as a child
};

} // namespace kestrum
