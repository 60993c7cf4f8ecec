import QtQuick
import Kestrum

// The window's content: the main screen once the camera may be used, the camera
// permission screen until then. Granting access switches over at once.
Item {
    id: container

    readonly property bool authorized: CameraController.authorizationStatus === CameraController.Authorized
    readonly property ContentView content: loader.item as ContentView

    Component.onCompleted: AppEnvironment.refuseScreenshotsMode()

    Loader {
        id: loader
        anchors.fill: parent
        sourceComponent: container.authorized ? contentView : permissionsView
    }

    Component {
        id: contentView
        ContentView {
        }
    }

    Component {
        id: permissionsView
        PermissionsView {
            authorizationStatus: CameraController.authorizationStatus
            onPermissionRequested: CameraController.requestPermission()
            onOpenSettingsRequested: Desktop.openCameraSettings()
        }
    }
}
