import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// The settings sheet over the main screen: the settings, the profile list and a profile's
// editor, one over the other, with a way back and "Done". It closes at once when the app
// dismisses whatever is presented.
Drawer {
    id: sheet

    readonly property alias stack: stack

    edge: Qt.BottomEdge
    width: parent.width
    height: parent.height - 24
    modal: true
    interactive: visible

    onClosed: stack.pop(null, StackView.Immediate)

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

            ToolButton {
                objectName: "back"
                visible: stack.depth > 1
                text: "\u2039"
                font.pixelSize: Theme.computedSize - 8
                Accessible.name: qsTr("Back")
                onClicked: stack.pop()
            }
            Label {
                Layout.fillWidth: true
                Layout.leftMargin: stack.depth > 1 ? 0 : Theme.spacing
                text: (stack.currentItem as Page)?.title ?? ""
                elide: Text.ElideRight
                font.pixelSize: Theme.valueSize
                font.bold: true
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            ToolButton {
                objectName: "edit"
                visible: stack.currentItem instanceof ProfilesPage
                text: profiles.editing ? qsTrId("Done") : qsTr("Edit")
                font.capitalization: Font.MixedCase
                Accessible.name: text
                onClicked: profiles.editing = !profiles.editing
            }
            ToolButton {
                objectName: "done"
                visible: !(stack.currentItem instanceof ProfilesPage && profiles.editing)
                text: qsTrId("Done")
                font.capitalization: Font.MixedCase
                font.bold: true
                Accessible.name: text
                onClicked: sheet.close()
            }
        }

        StackView {
            id: stack
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            initialItem: SettingsPage {
                onProfilesChosen: stack.push(profiles)
            }
        }
    }

    ProfilesPage {
        id: profiles
        visible: false
        onProfileChosen: (row, profileId, name) => stack.push(editor, {
                    "row": row,
                    "profileId": profileId,
                    "name": name
                })
    }

    Component {
        id: editor
        ProfileDetailPage {
        }
    }
}
