import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Shapes
import Kestrum

// Stands in for the camera preview while Kestrum may not use the camera: says why the
// camera is needed and offers the one way forward, asking for access the first time and
// sending the user to the system settings once access was refused or is restricted.
Rectangle {
    id: permissionsView

    // A CameraController.AuthorizationStatus.
    required property int authorizationStatus
    readonly property bool asked: authorizationStatus !== CameraController.NotDetermined

    signal permissionRequested
    signal openSettingsRequested

    color: Theme.background

    ColumnLayout {
        anchors.centerIn: parent
        width: parent.width
        spacing: 20

        // A camera: body, viewfinder hump and a ringed lens, drawn in a 60 × 48 box.
        Shape {
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: 60
            implicitHeight: 48
            layer.enabled: true
            layer.samples: 4
            Accessible.ignored: true

            ShapePath {
                fillColor: Theme.foreground
                fillRule: ShapePath.OddEvenFill
                strokeWidth: -1

                PathSvg {
                    path: "M 6 10 L 20 10 L 24 3 L 36 3 L 40 10 L 54 10 A 6 6 0 0 1 60 16 L 60 42 A 6 6 0 0 1 54 48 L 6 48 A 6 6 0 0 1 0 42 L 0 16 A 6 6 0 0 1 6 10 Z " + "M 43 29 A 13 13 0 1 0 17 29 A 13 13 0 1 0 43 29 Z " + "M 38 29 A 8 8 0 1 0 22 29 A 8 8 0 1 0 38 29 Z"
                }
            }
        }

        Label {
            Layout.fillWidth: true
            leftPadding: 12
            rightPadding: 12
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.foreground
            font.pixelSize: Theme.bodySize
            text: qsTrId("permission.camera.text")
        }

        Label {
            objectName: "settingsText"
            visible: permissionsView.asked
            Layout.fillWidth: true
            leftPadding: 12
            rightPadding: 12
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.foreground
            font.pixelSize: Theme.bodySize
            text: qsTrId("permission.camera.settings.text")
        }

        Button {
            objectName: "settingsButton"
            visible: permissionsView.asked
            Layout.alignment: Qt.AlignHCenter
            highlighted: true
            text: qsTrId("permission.camera.settings.button")
            Accessible.name: text
            onClicked: permissionsView.openSettingsRequested()
        }

        Button {
            objectName: "requestButton"
            visible: !permissionsView.asked
            Layout.alignment: Qt.AlignHCenter
            highlighted: true
            text: qsTrId("permission.camera.button")
            Accessible.name: text
            onClicked: permissionsView.permissionRequested()
        }
    }
}
