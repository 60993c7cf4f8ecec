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

    component ScaleRow: ColumnLayout {
        property alias title: heading.text
        property var entries: []
        Layout.fillWidth: true
        spacing: 6

        Label {
            id: heading
            font.pixelSize: 13
            font.capitalization: Font.AllUppercase
            opacity: 0.7
        }
        ListView {
            Layout.fillWidth: true
            Layout.preferredHeight: 44
            orientation: ListView.Horizontal
            spacing: 8
            clip: true
            model: parent.entries
            delegate: Rectangle {
                required property string modelData
                width: Math.max(44, text.implicitWidth + 20)
                height: 44
                radius: 8
                color: "#2a2a2a"
                Label {
                    id: text
                    anchors.centerIn: parent
                    text: parent.modelData
                    font.pixelSize: 18
                    font.weight: Font.DemiBold
                }
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 20
        spacing: 22

        Label {
            text: qsTr("Kestrum")
            font.pixelSize: 34
            font.weight: Font.Bold
        }
        Label {
            text: ScaleOverview.mode + "  ·  " + ScaleOverview.steps
            opacity: 0.7
        }
        ScaleRow { title: qsTr("Aperture"); entries: ScaleOverview.apertures }
        ScaleRow { title: qsTr("Shutter speed"); entries: ScaleOverview.speeds }
        ScaleRow { title: qsTr("ISO"); entries: ScaleOverview.isos }
        ScaleRow { title: qsTr("Compensation"); entries: ScaleOverview.compensations }
        Item { Layout.fillHeight: true }
    }
}
