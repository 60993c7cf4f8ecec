import QtQuick
import QtQuick.Controls
import Kestrum

// Asks whether the user would rate Kestrum in the software centre. Shown over the main
// window by the app shell; closes with either answer, or when the presented views are
// dismissed.
Dialog {
    id: dialog

    signal rateChosen

    anchors.centerIn: parent
    width: Math.min(parent.width - 48, 360)
    modal: true
    closePolicy: Popup.CloseOnEscape
    title: qsTr("Enjoying Kestrum?")

    Label {
        width: parent.width
        wrapMode: Text.WordWrap
        text: qsTr("If Kestrum helps you get your exposures right, would you rate it in the software centre?")
    }

    footer: DialogButtonBox {
        Button {
            text: qsTr("Not now")
            flat: true
            Accessible.name: text
            onClicked: dialog.close()
        }
        Button {
            text: qsTr("Rate Kestrum")
            flat: true
            Accessible.name: text
            onClicked: {
                dialog.rateChosen();
                dialog.close();
            }
        }
    }

    Connections {
        target: AppEnvironment
        function onDismissPresentedViewsRequested() {
            dialog.exit = null;
            dialog.close();
        }
    }
}
