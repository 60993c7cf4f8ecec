import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Kestrum

ApplicationWindow {
    id: window
    width: 390
    height: 844
    visible: true
    title: qsTr("Kestrum")
    Material.theme: Material.Dark
    Material.accent: "#ffb300"

    // The value the current mode computes, and what the photographer sets.
    readonly property bool shutterPriority: Meter.mode === "tv"
    readonly property bool manual: Meter.mode === "m"

    component Reading: ColumnLayout {
        property alias caption: captionLabel.text
        property alias value: valueLabel.text
        property bool computed: false
        spacing: 2
        Layout.fillWidth: true
        Label {
            id: captionLabel
            font.pixelSize: 13
            font.capitalization: Font.AllUppercase
            opacity: 0.65
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
        }
        Label {
            id: valueLabel
            font.pixelSize: computed ? 40 : 28
            font.weight: Font.DemiBold
            color: computed && Meter.exposureError !== "" ? "#ff5252"
                   : computed ? Material.accent : Material.foreground
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 20
        spacing: 18

        RowLayout {
            Layout.fillWidth: true
            Label {
                text: qsTr("Kestrum")
                font.pixelSize: 30
                font.weight: Font.Bold
                Layout.fillWidth: true
            }
            Label {
                text: AppSettings.currentProfileID
                opacity: 0.65
            }
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 300
            radius: 16
            color: "#1e1e1e"

            ColumnLayout {
                anchors.fill: parent
                anchors.margins: 24
                spacing: 22

                Reading {
                    caption: manual ? qsTr("Deviation") : shutterPriority ? qsTr("Aperture") : qsTr("Shutter speed")
                    value: manual ? Meter.manualExposure.signedDisplay
                           : shutterPriority ? "ƒ/" + Meter.aperture.display
                           : Meter.speed.display
                    computed: true
                }
                Label {
                    Layout.alignment: Qt.AlignHCenter
                    visible: Meter.exposureError !== ""
                    text: Meter.exposureError === "overexposed" ? qsTr("Too bright") : qsTr("Too dark")
                    color: "#ff5252"
                }
                RowLayout {
                    Layout.fillWidth: true
                    Reading { caption: qsTr("ISO"); value: Meter.iso.display }
                    Reading {
                        caption: shutterPriority ? qsTr("Speed") : qsTr("Aperture")
                        value: shutterPriority ? Meter.speed.display : "ƒ/" + Meter.aperture.display
                        visible: !manual
                    }
                    Reading { caption: qsTr("Comp."); value: Meter.compensation.signedDisplay }
                }
            }
        }

        TabBar {
            id: modes
            Layout.fillWidth: true
            currentIndex: ["av", "tv", "m"].indexOf(Meter.mode)
            onCurrentIndexChanged: Meter.mode = ["av", "tv", "m"][currentIndex]
            TabButton { text: qsTr("Av") }
            TabButton { text: qsTr("Tv") }
            TabButton { text: qsTr("M") }
        }

        Switch {
            text: qsTr("Hold")
            checked: Meter.hold
            onToggled: Meter.hold = checked
        }

        Item { Layout.fillHeight: true }
    }
}
