import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Kestrum

ApplicationWindow {
    id: window
    width: 390
    height: 844
    visible: true
    title: qsTr("Kestrum")
    Material.theme: Material.Dark
    Material.accent: Theme.appYellow

    minimumWidth: 320
    minimumHeight: 560
    color: Theme.background

    ContainerView {
        id: container
        anchors.fill: parent
    }

    // The preview shows the camera's frames, and faces are looked for while it does.
    Binding {
        target: CameraController
        property: "videoSink"
        value: container.content && container.content.preview ? container.content.preview.videoSink : null
    }
    Binding {
        target: FaceDetector
        property: "active"
        value: container.authorized && CameraController.hasSession && CameraController.sessionIsRunning && window.visibility !== Window.Minimized
    }
}
