import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Kestrum

// The logged photos, newest first, as a grid of pictures, a list of exposures or a map
// of where they were taken; each leads to its detail. A sheet over the main screen that
// closes at once when the app dismisses whatever is presented.
Drawer {
    id: sheet

    // The display mode: 0 grid, 1 list, 2 map; the grid to begin with.
    property int displayMode: 0
    readonly property alias stack: stack

    // Opens the detail of the photo in `row` of the model.
    function showPhoto(row: int) {
        stack.push(detail, LoggedPhotos.photoAt(row));
    }

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
                visible: stack.depth > 1
                text: "\u2039"
                font.pixelSize: Theme.computedSize - 8
                Accessible.name: qsTr("Back")
                onClicked: stack.pop()
            }
            Label {
                Layout.fillWidth: true
                Layout.leftMargin: stack.depth > 1 ? 0 : Theme.spacing
                text: stack.depth > 1 ? ((stack.currentItem as Page)?.title ?? "") : qsTrId("photoalbum.title")
                elide: Text.ElideRight
                font.pixelSize: Theme.valueSize
                font.bold: true
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            ToolButton {
                objectName: "done"
                text: qsTrId("Done")
                font.capitalization: Font.MixedCase
                font.bold: true
                Accessible.name: text
                onClicked: sheet.close()
            }
        }

        // The display mode: grid, list or map.
        Row {
            id: modes
            objectName: "displayMode"
            visible: stack.depth === 1
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: Theme.spacing
            Accessible.role: Accessible.PageTabList
            Accessible.name: qsTrId("accessibility.photoalbum.displayMode")

            // The delegate reaches the sheet by its id, a scope that qmllint of Qt 6.4
            // does not follow into delegates.
            // qmllint disable unqualified
            Repeater {
                model: [qsTrId("accessibility.photoalbum.grid"), qsTrId("accessibility.photoalbum.list"), qsTrId("accessibility.photoalbum.map")]

                delegate: Button {
                    required property int index
                    required property string modelData

                    objectName: "mode" + index
                    width: 96
                    text: modelData
                    checkable: true
                    checked: sheet.displayMode === index
                    highlighted: checked
                    // Dark text on the yellow of the chosen segment.
                    Material.foreground: checked ? Theme.background : Theme.foreground
                    font.capitalization: Font.MixedCase
                    Accessible.role: Accessible.PageTab
                    Accessible.name: modelData
                    onClicked: sheet.displayMode = index
                }
            }
            // qmllint enable unqualified
        }

        StackView {
            id: stack
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            initialItem: LoggedPhotosPage {
                displayMode: sheet.displayMode
                onPhotoChosen: row => sheet.showPhoto(row)
            }
        }
    }

    Component {
        id: detail
        PhotoDetailPage {
        }
    }
}
