import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// The logged photos in the chosen display mode: a grid of three columns, a list, or the
// map of those that have a position.
Page {
    id: page

    required property int displayMode

    // The photo in `row` of the model was chosen.
    signal photoChosen(int row)

    // Between the grid's pictures, in points.
    readonly property int gridSpacing: 4

    title: qsTrId("photoalbum.title")
    background: null

    StackLayout {
        anchors.fill: parent
        currentIndex: page.displayMode

        GridView {
            id: grid
            objectName: "grid"
            clip: true
            model: LoggedPhotos
            // Three columns; each picture keeps the spacing free on its right.
            cellWidth: width / 3
            cellHeight: cellWidth
            ScrollIndicator.vertical: ScrollIndicator {
            }

            // The delegate reaches the page by its id, a scope that qmllint of Qt 6.4
            // does not follow into delegates.
            // qmllint disable unqualified
            delegate: Image {
                id: cellPicture
                required property int index
                required property string previewSource

                width: grid.cellWidth - page.gridSpacing
                height: width
                source: previewSource
                // Decoded to the cell's height, so that a landscape picture still covers
                // the square sharply once cropped.
                sourceSize.height: height
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                Accessible.role: Accessible.Button
                Accessible.name: qsTrId("accessibility.photoalbum.photo")
                Accessible.onPressAction: page.photoChosen(index)

                Rectangle {
                    anchors.fill: parent
                    visible: cellPicture.status !== Image.Ready
                    color: Theme.background
                }
                TapHandler {
                    onTapped: page.photoChosen(cellPicture.index)
                }
            }

            // qmllint enable unqualified
            EmptyAlbumText {
                visible: grid.count === 0
                text: qsTrId("photoalbum.empty")
            }
        }

        ListView {
            id: list
            objectName: "list"
            clip: true
            // Only while shown: a hidden list still makes its cells, and their pictures
            // would decode alongside the grid's (a twelve-megapixel photo takes tens of
            // milliseconds even at a fraction of its size).
            model: page.displayMode === 1 ? LoggedPhotos : null
            ScrollIndicator.vertical: ScrollIndicator {
            }

            // qmllint disable unqualified
            delegate: LoggedPhotoListCell {
                required property int index

                width: ListView.view.width
                onClicked: page.photoChosen(index)
            }

            // qmllint enable unqualified
            EmptyAlbumText {
                visible: list.count === 0
                text: qsTrId("photoalbum.empty")
            }
        }

        Item {
            objectName: "map"

            // On the newest photo with a position, 0.01° each way; it does not try to fit
            // every pin.
            MapView {
                id: map
                objectName: "mapView"
                anchors.fill: parent
                visible: LoggedPhotos.hasPositionedPhoto
                centerLatitude: LoggedPhotos.mapCenterLatitude
                centerLongitude: LoggedPhotos.mapCenterLongitude
                spanDegrees: LoggedPhotos.mapSpanDegrees

                // qmllint disable unqualified
                Repeater {
                    // Only while shown: it makes a pin for every photo, and each pin's
                    // picture decodes, ahead of the grid's pictures when the map is hidden.
                    model: page.displayMode === 2 ? LoggedPhotos : null

                    // The roles come by the model: the pin's own latitude and longitude
                    // carry the same names.
                    delegate: MapPin {
                        id: pin
                        readonly property int row: index
                        readonly property string picture: model.previewSource

                        visible: model.hasCoordinate
                        latitude: model.latitude
                        longitude: model.longitude

                        ImageMapAnnotation {
                            previewSource: pin.picture
                            onClicked: page.photoChosen(pin.row)
                        }
                    }
                }
                // qmllint enable unqualified
            }

            EmptyAlbumText {
                visible: !LoggedPhotos.hasPositionedPhoto
                text: qsTrId("photoalbum.map.empty")
            }
        }
    }

    component EmptyAlbumText: Label {
        objectName: "emptyText"
        anchors.centerIn: parent
        width: parent.width - 4 * Theme.margin
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        color: Theme.secondary
        font.pixelSize: Theme.bodySize
    }
}
