import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// One logged photo as a row: its thumbnail, when it was taken, and its exposure. A screen
// reader meets the row as one element that reads the four values by name.
ItemDelegate {
    id: cell

    required property string previewSource
    required property date date
    required property string aperture
    required property string speed
    required property string iso
    required property string compensation

    // When it was taken: the locale's numeric date and short time.
    readonly property string dateText: date.toLocaleDateString(Qt.locale(), Locale.ShortFormat) + " " + date.toLocaleTimeString(Qt.locale(), Locale.ShortFormat)
    readonly property string summary: qsTrId("accessibility.aperture") + " " + aperture + ", " + qsTrId("accessibility.shutterSpeed") + " " + speed + ", " + qsTrId("accessibility.iso") + " " + iso + ", " + qsTrId("accessibility.compensation") + " " + compensation

    implicitHeight: 100 + 2 * Theme.spacing
    padding: Theme.spacing
    Accessible.name: dateText + ", " + summary
    Accessible.onPressAction: clicked()

    contentItem: RowLayout {
        spacing: Theme.margin

        Image {
            Layout.preferredWidth: 100
            Layout.preferredHeight: 100
            source: cell.previewSource
            sourceSize.width: 200
            sourceSize.height: 200
            fillMode: Image.PreserveAspectCrop
            asynchronous: true
            clip: true
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 6

            Label {
                text: cell.dateText
                color: Theme.secondary
                font.pixelSize: Theme.captionSize + 2
            }
            Flow {
                Layout.fillWidth: true
                spacing: 6

                Repeater {
                    model: [{
                            "text": "\u0192/" + cell.aperture,
                            "name": qsTrId("accessibility.aperture")
                        }, {
                            "text": cell.speed,
                            "name": qsTrId("accessibility.shutterSpeed")
                        }, {
                            "text": "ISO " + cell.iso,
                            "name": qsTrId("accessibility.iso")
                        }, {
                            "text": cell.compensation,
                            "name": qsTrId("accessibility.compensation")
                        }]

                    delegate: Row {
                        required property int index
                        required property var modelData

                        spacing: 6

                        Rectangle {
                            visible: parent.index > 0
                            width: 1
                            height: Theme.bodySize
                            color: Theme.secondary
                            opacity: 0.5
                        }
                        Label {
                            text: parent.modelData.text
                            font.pixelSize: Theme.bodySize - 1
                            Accessible.name: parent.modelData.name
                            Accessible.description: text
                        }
                    }
                }
            }
        }
    }
}
