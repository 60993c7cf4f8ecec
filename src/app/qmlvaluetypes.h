#pragma once

// The value types that the facades hand to QML, registered under lower-case names.

#include "camera/faceobservation.h"
#include "exposure/componentview.h"

#include <QQmlEngine>

namespace kestrum {

/// An exposure component: `type` (its step), `value`, `display`, `signedDisplay`.
struct ComponentViewForeign {
    Q_GADGET
    QML_FOREIGN(kestrum::ComponentView)
    QML_VALUE_TYPE(component)
};

/// One face: `boundingBox` (0…1, origin bottom-left of the upright picture) and
/// `confidence`.
struct FaceObservationForeign {
    Q_GADGET
    QML_FOREIGN(kestrum::FaceObservation)
    QML_VALUE_TYPE(faceObservation)
};

} // namespace kestrum
