import QtQuick
import QtMultimedia
import Kestrum

// What the camera sees, filling the view (the overhang cut off), with what is drawn over
// it: the square where a tap metered, and the outline of the face being metered. A tap
// meters once at its point and holds; a face meters at its centre every time it is seen.
// Without live frames (simulator mode) the still picture of the mock camera shows.
Item {
    id: preview

    // The mock camera's still picture instead of live frames.
    required property bool simulated

    readonly property alias videoSink: video.videoSink
    readonly property alias geometry: geometry
    readonly property rect faceOutline: outline.box

    // A tap at `point` (view coordinates).
    function meterAt(point: point) {
        CameraController.expose(geometry.devicePoint(point), true);
        PreviewOverlays.tap(point);
    }

    // A face with normalised box `box`, as the face detector reports it.
    function meterOnFace(box: rect) {
        outline.box = geometry.faceOutline(box);
        CameraController.expose(geometry.faceMeteringPoint(box), false);
        PreviewOverlays.faceSeen();
    }

    clip: true

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    VideoOutput {
        id: video
        anchors.fill: parent
        visible: !preview.simulated
        fillMode: VideoOutput.PreserveAspectCrop
    }

    MockCameraView {
        anchors.fill: parent
        visible: preview.simulated
    }

    PreviewGeometry {
        id: geometry
        frameWidth: video.sourceRect.width
        frameHeight: video.sourceRect.height
        viewWidth: preview.width
        viewHeight: preview.height
    }

    TapHandler {
        enabled: !preview.simulated
        onTapped: eventPoint => preview.meterAt(eventPoint.position)
    }

    Connections {
        target: FaceDetector
        enabled: !preview.simulated
        function onFaceObserved(observation) {
            preview.meterOnFace(observation.boundingBox);
        }
    }

    // The face outline, drawn at the scale of the picture as shown.
    Rectangle {
        id: outline

        property rect box

        x: box.x
        y: box.y
        width: box.width
        height: box.height
        visible: PreviewOverlays.faceOutlineVisible
        radius: geometry.faceCornerRadius(box)
        color: Theme.clear
        border.color: Theme.appYellow
        border.width: Math.max(1.5, 5 * geometry.referenceScale)
        opacity: Theme.markerOpacity
    }

    // The tap marker, with a soft dark edge so it reads on bright scenes.
    Item {
        id: marker

        readonly property int phase: PreviewOverlays.markerPhase

        x: PreviewOverlays.markerX
        y: PreviewOverlays.markerY
        width: PreviewOverlays.markerSide
        height: PreviewOverlays.markerSide
        visible: phase !== PreviewOverlays.Hidden
        onPhaseChanged: {
            fade.stop();
            if (phase === PreviewOverlays.Fading)
                fade.start();
            else
                opacity = 1;
        }

        NumberAnimation {
            id: fade
            target: marker
            property: "opacity"
            from: 1
            to: 0
            duration: PreviewOverlays.markerFadeMs
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: -2
            color: Theme.clear
            border.color: Theme.shadow
            border.width: 5
            radius: 3
            opacity: 0.5
        }
        Rectangle {
            anchors.fill: parent
            color: Theme.clear
            border.color: Theme.appYellow
            border.width: 2
            opacity: Theme.markerOpacity
        }
    }
}
