import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// One logged photo: the picture at full size, turned upright, its exposure, and where it
// was taken. The picture and the place name load on their own; each shows a placeholder
// until it is there.
Page {
    id: page

    required property string fullSizeSource
    required property date date
    required property string aperture
    required property string speed
    required property string iso
    required property string compensation
    required property bool hasCoordinate
    required property double latitude
    required property double longitude

    // The place, "name, locality", once the location manager has named it.
    readonly property PlaceName place: hasCoordinate ? LoggedPhotos.placeName(latitude, longitude) : null

    title: date.toLocaleDateString(Qt.locale(), Locale.ShortFormat) + " " + page.date.toLocaleTimeString(Qt.locale(), Locale.ShortFormat)
    background: null

    Flickable {
        anchors.fill: parent
        contentHeight: form.implicitHeight + 2 * Theme.margin
        clip: true

        ColumnLayout {
            id: form
            x: Theme.margin
            y: Theme.margin
            width: parent.width - 2 * Theme.margin
            spacing: Theme.spacing

            Item {
                Layout.fillWidth: true
                Layout.preferredHeight: picture.status === Image.Ready ? width * picture.implicitHeight / Math.max(1, picture.implicitWidth) : width * 0.75

                Image {
                    id: picture
                    objectName: "picture"
                    anchors.fill: parent
                    source: page.fullSizeSource
                    sourceSize.width: 1600
                    fillMode: Image.PreserveAspectFit
                    asynchronous: true
                    autoTransform: true
                }
                BusyIndicator {
                    anchors.centerIn: parent
                    running: picture.status === Image.Loading
                }
            }

            Label {
                Layout.topMargin: Theme.margin
                text: qsTrId("photoalbum.detail.settings")
                color: Theme.secondary
                font.pixelSize: Theme.captionSize
                font.capitalization: Font.AllUppercase
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Repeater {
                model: [[qsTrId("accessibility.aperture"), "\u0192/" + page.aperture], [qsTrId("accessibility.shutterSpeed"), page.speed], [qsTrId("accessibility.iso"), page.iso], [qsTrId("accessibility.compensation"), page.compensation]]

                delegate: RowLayout {
                    required property var modelData

                    Layout.fillWidth: true
                    Accessible.role: Accessible.StaticText
                    Accessible.name: modelData[0] + " " + modelData[1]

                    Label {
                        Layout.fillWidth: true
                        text: parent.modelData[0]
                        font.pixelSize: Theme.bodySize
                    }
                    Label {
                        text: parent.modelData[1]
                        font.pixelSize: Theme.bodySize
                        font.bold: true
                    }
                }
            }

            Label {
                visible: page.hasCoordinate
                Layout.topMargin: Theme.margin
                text: qsTrId("photoalbum.detail.location")
                color: Theme.secondary
                font.pixelSize: Theme.captionSize
                font.capitalization: Font.AllUppercase
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            // Where it was taken: a small map, 0.01° each way, with one pin.
            Item {
                visible: page.hasCoordinate
                Layout.fillWidth: true
                Layout.preferredHeight: 180

                MapView {
                    id: map
                    objectName: "detailMap"
                    anchors.fill: parent
                    centerLatitude: page.latitude
                    centerLongitude: page.longitude
                    spanDegrees: LoggedPhotos.mapSpanDegrees
                    interactive: false

                    MapPin {
                        latitude: page.latitude
                        longitude: page.longitude

                        Rectangle {
                            anchors.centerIn: parent
                            width: 14
                            height: 14
                            radius: 7
                            color: Theme.appYellow
                            border.color: Theme.background
                            border.width: 2
                        }
                    }
                }
                // Rounds the map's corners (radius 8) by covering them with the sheet's
                // own colour.
                Rectangle {
                    anchors.fill: parent
                    anchors.margins: -3
                    radius: 11
                    color: Theme.clear
                    border.width: 6
                    border.color: Theme.panel
                }
            }
            Label {
                objectName: "placeName"
                visible: page.hasCoordinate
                Layout.fillWidth: true
                wrapMode: Text.WordWrap
                font.pixelSize: Theme.bodySize
                text: page.place && page.place.finished ? (page.place.text || page.latitude.toFixed(4) + ", " + page.longitude.toFixed(4)) : "\u2026"
            }
        }
    }
}
