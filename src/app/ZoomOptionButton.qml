import QtQuick
import QtQuick.Controls
import Kestrum

// One preset of the zoom row: its title on a capsule of scrim, larger and in the accent
// while selected. The row handles taps, keys and the screen reader.
Item {
    id: option

    required property string title
    required property string activeTitle
    required property bool selected
    // The keyboard is on the row: the selected option shows it.
    required property bool keyboardFocus

    // Space above and below the title; none at the sides, where the capsule is at least as
    // wide as it is tall so that it stays round.
    readonly property int titlePadding: 8
    readonly property int selectedTitlePadding: 3

    // Both looks fit in the same height, so the row does not jump as the selection moves;
    // half the row's spacing on either side belongs to the option, so taps in the gaps count.
    implicitWidth: capsule.width + Theme.spacing
    implicitHeight: Math.ceil(Math.max(smallTitle.height + 2 * titlePadding, largeTitle.height + 2 * selectedTitlePadding))

    FontMetrics {
        id: smallTitle
        font.family: Theme.roundedFontFamily
        font.bold: true
        font.pixelSize: Theme.smallCaptionSize
    }
    FontMetrics {
        id: largeTitle
        font.family: Theme.roundedFontFamily
        font.bold: true
        font.pixelSize: Theme.captionSize
    }

    Rectangle {
        id: capsule
        objectName: "capsule"
        anchors.centerIn: parent
        height: label.implicitHeight + 2 * (option.selected ? option.selectedTitlePadding : option.titlePadding)
        width: Math.max(label.implicitWidth, height)
        radius: height / 2
        color: Theme.scrim
        border.width: option.keyboardFocus && option.selected ? 1 : 0
        border.color: Theme.appYellow

        Behavior on height  {
            NumberAnimation {
                duration: Theme.selectionMs
                easing.type: Easing.OutQuad
            }
        }
    }

    Label {
        id: label
        objectName: "title"
        anchors.centerIn: parent
        text: option.selected ? option.activeTitle : option.title
        font.family: Theme.roundedFontFamily
        font.bold: true
        font.pixelSize: option.selected ? Theme.captionSize : Theme.smallCaptionSize
        color: option.selected ? Theme.appYellow : Theme.foreground
        Accessible.ignored: true

        Behavior on font.pixelSize  {
            NumberAnimation {
                duration: Theme.selectionMs
                easing.type: Easing.OutQuad
            }
        }
        Behavior on color  {
            ColorAnimation {
                duration: Theme.selectionMs
                easing.type: Easing.OutQuad
            }
        }
    }
}
