import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// The profiles, in order: each opens its editor. In edit mode a profile can be deleted
// or dragged to another place, except the first, which always stays first.
Page {
    id: page

    property bool editing: false

    // Opens the editor of the profile in `row`.
    signal profileChosen(int row, string profileId, string name)

    title: qsTrId("profiles.title")
    background: null

    ListView {
        id: list
        objectName: "profileList"
        anchors.fill: parent
        clip: true
        model: AppSettings.profiles
        activeFocusOnTab: true
        keyNavigationEnabled: true

        // The delegate reaches the page and the list by their ids, a scope that qmllint
        // of Qt 6.4 does not follow into delegates.
        // qmllint disable unqualified
        delegate: ItemDelegate {
            id: row

            required property int index
            required property string profileId
            required property string name
            required property bool isDefault

            readonly property bool movable: page.editing && !isDefault

            width: ListView.view.width
            height: 52
            text: isDefault ? qsTrId("profile.default") : name
            font.pixelSize: Theme.bodySize
            leftPadding: page.editing && !isDefault ? 56 : Theme.margin
            Accessible.name: text
            Accessible.onPressAction: clicked()
            onClicked: {
                if (!page.editing)
                    page.profileChosen(index, profileId, name);
            }

            // Delete, in edit mode.
            RoundButton {
                objectName: "delete" + row.index
                visible: row.movable
                anchors.left: parent.left
                anchors.leftMargin: Theme.spacing
                anchors.verticalCenter: parent.verticalCenter
                width: 36
                height: 36
                text: "\u2212"
                font.pixelSize: Theme.valueSize
                background: Rectangle {
                    radius: 18
                    color: Theme.error
                }
                Accessible.name: qsTr("Delete %1").arg(row.text)
                onClicked: AppSettings.profiles.remove(row.index)
            }

            // Drag to move, in edit mode: the row lands where the finger lets go.
            Label {
                id: handle
                objectName: "handle" + row.index
                visible: row.movable
                anchors.right: parent.right
                anchors.rightMargin: Theme.margin
                anchors.verticalCenter: parent.verticalCenter
                text: "\u2261"
                font.pixelSize: 24
                color: Theme.secondary
                Accessible.role: Accessible.Button
                Accessible.name: qsTr("Move %1").arg(row.text)

                DragHandler {
                    target: null
                    yAxis.enabled: true
                    xAxis.enabled: false
                    onActiveChanged: {
                        if (active)
                            return;
                        const to = Math.max(1, Math.min(list.count - 1, row.index + Math.round(translation.y / row.height)));
                        if (to !== row.index)
                            AppSettings.profiles.move(row.index, to);
                    }
                }
            }
        }

        // qmllint enable unqualified
        footer: ColumnLayout {
            width: ListView.view.width
            spacing: Theme.spacing

            Label {
                Layout.fillWidth: true
                Layout.margins: Theme.margin
                text: qsTrId("profiles.explanation")
                wrapMode: Text.WordWrap
                color: Theme.secondary
                font.pixelSize: Theme.captionSize + 2
            }
            Button {
                objectName: "addProfile"
                Layout.leftMargin: Theme.margin
                text: "\u2295  " + qsTrId("profiles.button.addProfile")
                flat: true
                font.capitalization: Font.MixedCase
                Accessible.name: qsTrId("profiles.button.addProfile")
                onClicked: AppSettings.profiles.add()
            }
        }
    }
}
