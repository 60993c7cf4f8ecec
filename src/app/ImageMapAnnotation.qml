import QtQuick
import Kestrum

// A logged photo on the map: its picture in a 40-point frame with rounded corners and a
// yellow outline, standing on a small yellow pointer whose tip is the place.
Item {
    id: annotation

    required property string previewSource

    signal clicked

    // The pin's origin is the place: the pointer's tip stands on it.
    x: -width / 2
    y: -height
    width: 40
    height: 40 + pointer.height
    Accessible.role: Accessible.Button
    Accessible.name: qsTrId("accessibility.photoalbum.photo")
    Accessible.onPressAction: clicked()

    Rectangle {
        id: frame
        width: 40
        height: 40
        radius: 4
        color: Theme.appYellow

        Image {
            anchors.fill: parent
            anchors.margins: 3
            source: annotation.previewSource
            sourceSize.width: 80
            sourceSize.height: 80
            fillMode: Image.PreserveAspectCrop
            asynchronous: true
        }
    }
    Triangle {
        id: pointer
        anchors.top: frame.bottom
        anchors.horizontalCenter: frame.horizontalCenter
        width: 12
        height: 6
        color: Theme.appYellow
    }
    TapHandler {
        onTapped: annotation.clicked()
    }
}
