pragma Singleton
import QtQuick

// The named colours, type sizes and spacings of every screen. No colour literal lives
// outside this file.
QtObject {
    // The accent of the meter: the tap marker, the face outline, a changed control.
    readonly property color appYellow: "#ffcc00"
    // The tap marker and the face outline draw the accent at this opacity.
    readonly property real markerOpacity: 0.8
    readonly property color error: "#ff453a"
    readonly property color foreground: "#ffffff"
    readonly property color disabled: "#8e8e93"
    readonly property color secondary: "#aeaeb2"
    readonly property color background: "#000000"
    readonly property color panel: "#1c1c1e"
    // Behind labels drawn over the preview.
    readonly property color scrim: Qt.rgba(0, 0, 0, 0.4)
    readonly property color shadow: Qt.rgba(0, 0, 0, 0.7)
    readonly property color clear: "transparent"

    readonly property int captionSize: 11
    readonly property int smallCaptionSize: 9
    // The rounded face of small labels over the preview (package fonts-quicksand); without
    // it the default face stands in.
    readonly property string roundedFontFamily: "Quicksand"
    readonly property int bodySize: 15
    readonly property int valueSize: 20
    readonly property int computedSize: 34

    readonly property int spacing: 8
    readonly property int margin: 16

    // How long a control takes to show a new selection.
    readonly property int selectionMs: 200
}
