import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// A screen that slides up over the main screen, with its title and a "Done" button. It
// closes at once when the app dismisses whatever is presented.
Drawer {
    id: sheet

    required property string title
    default property alias content: body.data

    edge: Qt.BottomEdge
    width: parent.width
    height: parent.height - 24
    modal: true
    interactive: visible

    Connections {
        target: AppEnvironment
        function onDismissPresentedViewsRequested() {
            sheet.close();
        }
    }

    background: Rectangle {
        color: Theme.panel
        radius: 12
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.margins: Theme.spacing

            Label {
                Layout.fillWidth: true
                Layout.leftMargin: Theme.spacing
                text: sheet.title
                font.pixelSize: Theme.valueSize
                font.bold: true
            }
            ToolButton {
                text: qsTrId("Done")
                Accessible.name: text
                onClicked: sheet.close()
            }
        }

        Item {
            id: body
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
