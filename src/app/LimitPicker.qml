import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// A limit of a profile, chosen from a menu of display texts ("125", "4s", "2.8").
RowLayout {
    id: picker

    required property string title
    // The section it belongs to, for screen readers: "Aperture".
    required property string section
    required property ExposureScaleModel choices

    Layout.fillWidth: true

    Label {
        Layout.fillWidth: true
        text: picker.title
        font.pixelSize: Theme.bodySize
    }
    ComboBox {
        Layout.preferredWidth: 120
        model: picker.choices
        textRole: "display"
        currentIndex: picker.choices.currentIndex
        Accessible.name: picker.title
        Accessible.description: picker.section
        onActivated: index => picker.choices.currentIndex = index
    }
}
