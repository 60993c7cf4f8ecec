#pragma once

#include "lightvaluestream.h"
#include "metadataprovider.h"
#include "platform/camera/authorizationstatus.h"
#include "platform/camera/exposuremode.h"
#include "zoomoption.h"

#include <QFuture>
#include <QList>
#include <QPointF>

#include <optional>

class QObject;

namespace kestrum {

/// What the rest of the app asks of a camera: zoom presets and pinch, permission,
/// set-up, metering at a point, logging the next frame, and the light value stream
/// `lv` that drives every exposure calculation.
///
/// Implementations are QObjects with a signal `objectWillChange()` emitted before any
/// of their observable state changes; `AnyCameraController` relies on it.
class CameraControllerProtocol {
public:
    virtual ~CameraControllerProtocol() = default;

    virtual QList<ZoomOption> zoomOptions() const = 0;
    /// The pinch multiplier over the option current when the pinch began; 1 otherwise.
    virtual float interactiveZoomFactor() const = 0;
    virtual void setInteractiveZoomFactor(float factor) = 0;
    virtual std::optional<ZoomOption> currentZoomOption() const = 0;
    virtual void setCurrentZoomOption(const std::optional<ZoomOption>& option) = 0;
    virtual void incrementZoom() = 0;
    virtual void decrementZoom() = 0;
    /// Ends a pinch, folding the interactive factor into the current option.
    virtual void commitInteractiveZoom() = 0;

    virtual AuthorizationStatus authorizationStatus() const = 0;
    /// The capture session the preview attaches to; null when there is none.
    virtual QObject* session() const = 0;
    virtual bool sessionIsRunning() const = 0;
    /// Asks for camera access; the answer arrives later through `authorizationStatus`.
    virtual void requestPermission() = 0;
    /// Builds and starts the capture pipeline; throws CameraControllerException.
    virtual void setUp() = 0;

    /// Takes one light-value reading and publishes it on `lv`.
    virtual void measure() = 0;
    /// Captures the next frame as a logged photo. The future fails with the album's
    /// error or a CameraControllerException.
    virtual QFuture<void> logExposure() = 0;
    /// Meters at `point` (0…1 on each axis of the capture device) in `mode`.
    virtual void expose(QPointF point, ExposureMode mode, bool monitorSubjectAreaChange) = 0;

    virtual MetadataProvider getMetadata() const = 0;
    virtual void setGetMetadata(MetadataProvider provider) = 0;

    /// Light values at ISO 100 in stops.
    virtual LightValueStream lv() const = 0;
};

} // namespace kestrum
