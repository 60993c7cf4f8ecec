import QtQuick
import QtQuick.Controls
import Kestrum

// Tells why the camera could not be set up; "OK" tries again, so the alert comes back
// for as long as the camera keeps failing.
Dialog {
    id: alert

    required property string errorText

    signal retryRequested

    anchors.centerIn: parent
    width: Math.min(parent.width - 48, 360)
    modal: true
    closePolicy: Popup.NoAutoClose
    title: qsTr("Camera unavailable")

    Label {
        width: parent.width
        wrapMode: Text.WordWrap
        text: alert.errorText
    }

    footer: DialogButtonBox {
        Button {
            text: qsTrId("OK")
            flat: true
            Accessible.name: text
            onClicked: alert.accept()
        }
    }

    onAccepted: retryRequested()
}
