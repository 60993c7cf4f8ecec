import QtQuick
import QtQuick.Controls
import Kestrum

// Two buttons side by side, minus and plus, in one 120 × 32 capsule.
Item {
    id: stepper

    property bool decrementEnabled: true
    property bool incrementEnabled: true
    property color tint: Theme.foreground
    property string negativeLabel: "\u2212"
    property string positiveLabel: "+"

    signal decrementClicked
    signal incrementClicked

    implicitWidth: 120
    implicitHeight: 32

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.panel
    }

    Rectangle {
        anchors.centerIn: parent
        width: 1
        height: parent.height - 12
        color: Theme.secondary
        opacity: 0.4
    }

    Row {
        anchors.fill: parent

        Repeater {
            model: [{
                    "label": stepper.negativeLabel,
                    "enabled": stepper.decrementEnabled,
                    "increment": false
                }, {
                    "label": stepper.positiveLabel,
                    "enabled": stepper.incrementEnabled,
                    "increment": true
                }]

            // The delegate reaches the control by its id, a scope that qmllint of Qt 6.4 does
            // not follow into delegates.
            // qmllint disable unqualified
            delegate: AbstractButton {
                id: button
                required property var modelData

                width: stepper.width / 2
                height: stepper.height
                enabled: modelData.enabled
                focusPolicy: Qt.NoFocus
                Accessible.ignored: true
                contentItem: Text {
                    text: button.modelData.label
                    color: button.enabled ? stepper.tint : Theme.disabled
                    opacity: button.pressed ? 0.5 : 1
                    font.pixelSize: Theme.valueSize
                    font.bold: true
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                background: null
                onClicked: button.modelData.increment ? stepper.incrementClicked() : stepper.decrementClicked()
            }
            // qmllint enable unqualified
        }
    }
}
