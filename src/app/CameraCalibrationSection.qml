import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// The camera in use, matched to a handheld meter: its calibration offset in thirds of a
// stop, and the f-number of its lens when it does not report one. A change takes effect
// on the next reading.
ColumnLayout {
    id: section

    spacing: Theme.spacing

    Label {
        Layout.topMargin: Theme.margin
        text: qsTrId("settings.calibration.title")
        color: Theme.secondary
        font.pixelSize: Theme.captionSize
        font.capitalization: Font.AllUppercase
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    RowLayout {
        Layout.fillWidth: true

        Label {
            Layout.fillWidth: true
            text: qsTrId("settings.calibration")
            font.pixelSize: Theme.bodySize
        }
        Label {
            text: CameraCalibration.calibrationText
            font.pixelSize: Theme.bodySize
            font.bold: true
            color: CameraCalibration.calibrationIndex === (CameraCalibration.calibrationCount - 1) / 2 ? Theme.foreground : Theme.appYellow
        }
        StepperButtons {
            objectName: "calibrationStepper"
            decrementEnabled: CameraCalibration.calibrationIndex > 0
            incrementEnabled: CameraCalibration.calibrationIndex < CameraCalibration.calibrationCount - 1
            activeFocusOnTab: true
            Accessible.role: Accessible.Slider
            Accessible.name: qsTrId("settings.calibration")
            Accessible.description: CameraCalibration.calibrationText
            Keys.onLeftPressed: decrementClicked()
            Keys.onRightPressed: incrementClicked()
            onDecrementClicked: {
                if (decrementEnabled)
                    CameraCalibration.calibrationIndex -= 1;
            }
            onIncrementClicked: {
                if (incrementEnabled)
                    CameraCalibration.calibrationIndex += 1;
            }

            // A screen reader's Increase and Decrease, called by name.
            function accessibleIncreaseAction() {
                incrementClicked();
            }
            function accessibleDecreaseAction() {
                decrementClicked();
            }
        }
    }
    Label {
        Layout.fillWidth: true
        text: qsTrId("settings.calibration.explanation")
        wrapMode: Text.WordWrap
        color: Theme.secondary
        font.pixelSize: Theme.captionSize + 2
    }

    RowLayout {
        visible: !CameraCalibration.reportsAperture
        Layout.fillWidth: true

        Label {
            Layout.fillWidth: true
            text: qsTrId("settings.lensAperture")
            font.pixelSize: Theme.bodySize
        }
        // The f-number in tenths, f/1.0 to f/22.
        SpinBox {
            objectName: "lensAperture"
            from: 10
            to: 220
            value: Math.round(CameraCalibration.lensAperture * 10)
            editable: true
            textFromValue: value => "\u0192/" + (value / 10).toFixed(1)
            valueFromText: text => Math.round(parseFloat(text.replace("\u0192/", "")) * 10)
            Accessible.name: qsTrId("settings.lensAperture")
            onValueModified: CameraCalibration.lensAperture = value / 10
        }
    }
    Label {
        visible: !CameraCalibration.reportsAperture
        Layout.fillWidth: true
        text: qsTrId("settings.lensAperture.explanation")
        wrapMode: Text.WordWrap
        color: Theme.secondary
        font.pixelSize: Theme.captionSize + 2
    }
}
