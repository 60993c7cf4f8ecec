import QtQuick
import Kestrum

// Exposure compensation: its caption and value over a minus and plus stepper. Yellow
// while the value differs from the default.
FocusScope {
    id: control

    // The entries on offer and the selection; writing its currentIndex picks an entry.
    required property ExposureScaleModel values
    // The value's text with its sign: "+⅓".
    required property string currentText
    // Whether the value differs from the default.
    required property bool changed
    property string label: "\u00b1"

    readonly property string value: currentText
    readonly property color tint: changed ? Theme.appYellow : Theme.foreground

    function increment() {
        if (stepperState.incrementedIndex >= 0) {
            Haptics.selectionChanged();
            control.values.currentIndex = stepperState.incrementedIndex;
        }
    }
    function decrement() {
        if (stepperState.decrementedIndex >= 0) {
            Haptics.selectionChanged();
            control.values.currentIndex = stepperState.decrementedIndex;
        }
    }

    // A screen reader's Increase and Decrease (one entry on or back): Qt offers them for the
    // slider role and calls these functions by name.
    function accessibleIncreaseAction() {
        increment();
    }
    function accessibleDecreaseAction() {
        decrement();
    }

    implicitWidth: Math.max(captionRow.implicitWidth, stepper.implicitWidth)
    implicitHeight: captionRow.implicitHeight + 4 + stepper.implicitHeight
    activeFocusOnTab: true

    Accessible.role: Accessible.Slider
    Accessible.name: qsTrId("accessibility.compensation")
    Accessible.focusable: true
    Keys.onRightPressed: increment()
    Keys.onUpPressed: increment()
    Keys.onLeftPressed: decrement()
    Keys.onDownPressed: decrement()

    StepperState {
        id: stepperState
        currentIndex: control.values.currentIndex
        count: control.values.count
    }

    Row {
        id: captionRow
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 4
        Accessible.ignored: true

        Text {
            text: control.label
            color: control.activeFocus ? Theme.appYellow : control.tint
            font.pixelSize: Theme.bodySize
            font.bold: true
        }
        Text {
            text: control.currentText
            color: control.tint
            font.pixelSize: Theme.bodySize
            font.bold: true
        }
    }

    StepperButtons {
        id: stepper
        objectName: "stepper"
        anchors.top: captionRow.bottom
        anchors.topMargin: 4
        anchors.horizontalCenter: parent.horizontalCenter
        tint: control.tint
        incrementEnabled: stepperState.incrementEnabled
        decrementEnabled: stepperState.decrementEnabled
        onIncrementClicked: control.increment()
        onDecrementClicked: control.decrement()
    }
}
