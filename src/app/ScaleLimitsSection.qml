import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Kestrum

// One value's part of a profile: its step (full, half or third stops) and the lowest and
// highest value offered, each chosen from the scale of the step cut at a fixed pivot, so
// that a minimum can never pass a maximum.
ColumnLayout {
    id: section

    required property string title
    required property int step
    required property ExposureScaleModel minimumChoices
    required property ExposureScaleModel maximumChoices

    signal stepChosen(int step)

    spacing: Theme.spacing

    Label {
        text: section.title
        color: Theme.secondary
        font.pixelSize: Theme.captionSize
        font.capitalization: Font.AllUppercase
        Layout.topMargin: Theme.margin
    }

    // The step, as three segments.
    RowLayout {
        Layout.fillWidth: true
        spacing: 0

        Repeater {
            model: [qsTrId("stops.full"), qsTrId("stops.half"), qsTrId("stops.third")]

            // The delegate reaches the section by its id, a scope that qmllint of Qt 6.4
            // does not follow into delegates.
            // qmllint disable unqualified
            delegate: Button {
                required property int index
                required property string modelData

                Layout.fillWidth: true
                text: modelData
                checkable: true
                checked: section.step === index
                highlighted: checked
                // Dark text on the yellow of the chosen segment.
                Material.foreground: checked ? Theme.background : Theme.foreground
                font.capitalization: Font.MixedCase
                Accessible.name: modelData
                Accessible.description: section.title
                onClicked: section.stepChosen(index)
            }
            // qmllint enable unqualified
        }
    }

    LimitPicker {
        title: qsTrId("settings.minimum")
        section: section.title
        choices: section.minimumChoices
    }
    LimitPicker {
        title: qsTrId("settings.maximum")
        section: section.title
        choices: section.maximumChoices
    }
}
