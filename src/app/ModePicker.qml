import QtQuick
import QtQuick.Controls
import Kestrum

// Chooses the metering mode: aperture priority, shutter priority or manual.
ToolButton {
    id: button

    readonly property var names: [qsTrId("accessibility.mode.av"), qsTrId("accessibility.mode.tv"), qsTrId("accessibility.mode.m")]
    readonly property var shortNames: [qsTr("Av"), qsTr("Tv"), qsTr("M")]

    text: shortNames[Meter.mode]
    font.pixelSize: Theme.valueSize
    font.bold: true
    font.capitalization: Font.MixedCase
    Accessible.role: Accessible.ComboBox
    Accessible.name: qsTrId("mode")
    Accessible.description: names[Meter.mode]
    onClicked: menu.open()

    Menu {
        id: menu
        objectName: "modeMenu"
        y: button.height

        MenuItem {
            text: button.names[0]
            checkable: true
            checked: Meter.mode === Exposure.AperturePriority
            Accessible.name: text
            onTriggered: Meter.mode = Exposure.AperturePriority
        }
        MenuItem {
            text: button.names[1]
            checkable: true
            checked: Meter.mode === Exposure.ShutterPriority
            Accessible.name: text
            onTriggered: Meter.mode = Exposure.ShutterPriority
        }
        MenuItem {
            text: button.names[2]
            checkable: true
            checked: Meter.mode === Exposure.Manual
            Accessible.name: text
            onTriggered: Meter.mode = Exposure.Manual
        }
    }
}
