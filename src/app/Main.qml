import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtMultimedia
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
    readonly property bool shutterPriority: Meter.mode === Exposure.ShutterPriority
    readonly property bool manual: Meter.mode === Exposure.Manual

    component Reading: ColumnLayout {
        id: reading
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
            font.pixelSize: reading.computed ? 40 : 28
            font.weight: Font.DemiBold
            color: reading.computed && Meter.exposureError !== Exposure.NoError ? "#ff5252" : reading.computed ? Material.accent : Material.foreground
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
                    caption: window.manual ? qsTr("Deviation") : window.shutterPriority ? qsTr("Aperture") : qsTr("Shutter speed")
                    value: window.manual ? Meter.manualExposure.signedDisplay : window.shutterPriority ? "ƒ/" + Meter.aperture.display : Meter.speed.display
                    computed: true
                }
                Label {
                    Layout.alignment: Qt.AlignHCenter
                    visible: Meter.exposureError !== Exposure.NoError
                    text: Meter.exposureError === Exposure.Overexposed ? qsTr("Too bright") : qsTr("Too dark")
                    color: "#ff5252"
                }
                RowLayout {
                    Layout.fillWidth: true
                    Reading {
                        caption: qsTr("ISO")
                        value: Meter.iso.display
                    }
                    Reading {
                        caption: window.shutterPriority ? qsTr("Speed") : qsTr("Aperture")
                        value: window.shutterPriority ? Meter.speed.display : "ƒ/" + Meter.aperture.display
                        visible: !window.manual
                    }
                    Reading {
                        caption: qsTr("Comp.")
                        value: Meter.compensation.signedDisplay
                    }
                }
            }
        }

        TabBar {
            id: modes
            Layout.fillWidth: true
            // The tabs stand in the order of the modes.
            currentIndex: Meter.mode
            onCurrentIndexChanged: Meter.mode = currentIndex
            TabButton {
                text: qsTr("Av")
            }
            TabButton {
                text: qsTr("Tv")
            }
            TabButton {
                text: qsTr("M")
            }
        }

        Switch {
            text: qsTr("Hold")
            checked: Meter.hold
            onToggled: Meter.hold = checked
        }

        // What the camera sees: the live camera's frames; the mock camera has none.
        VideoOutput {
            id: preview
            Layout.fillWidth: true
            Layout.fillHeight: true
            fillMode: VideoOutput.PreserveAspectCrop
        }
    }

    Binding {
        target: CameraController
        property: "videoSink"
        value: preview.videoSink
    }
}
