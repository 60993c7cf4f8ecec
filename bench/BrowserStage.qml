import QtQuick
import Kestrum

// The logged-photos sheet over the app's background, as the main screen holds it.
Item {
    readonly property alias sheet: sheet

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    LoggedPhotosView {
        id: sheet
    }
}
