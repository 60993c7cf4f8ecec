import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// The main screen: the preview with the computed exposure over it, and the controls that
// steer the meter, choose the profile, log an exposure and open the settings and the
// logged photos.
Item {
    id: content

    property bool settingsPresented: false
    property bool loggedPhotosPresented: false

    readonly property bool shutterPriority: Meter.mode === Exposure.ShutterPriority
    readonly property bool manual: Meter.mode === Exposure.Manual
    readonly property bool exposureError: Meter.exposureError !== Exposure.NoError
    readonly property alias preview: preview
    readonly property alias apertureStrip: apertureStrip
    readonly property alias speedStrip: speedStrip
    readonly property alias isoStrip: isoStrip
    readonly property alias compensationControl: compensation
    // The magnification of the running pinch, over the zoom when it began.
    readonly property real pinchScale: pinch.activeScale

    // The log road: the camera captures its next frame into the album; the hand feels
    // how it went, and a failed log says nothing more.
    function logExposure() {
        CameraController.logExposure();
    }

    // Hold freezes a fresh reading: measure once, then toggle.
    function toggleHold() {
        CameraController.measure();
        Meter.hold = !Meter.hold;
        Haptics.selectionChanged();
    }

    // Sets the camera up; a camera error shows the alert, whose "OK" tries again.
    function setUpCamera() {
        if (!CameraController.setUp())
            errorAlert.open();
    }

    Component.onCompleted: setUpCamera()
    onSettingsPresentedChanged: settingsPresented ? settingsSheet.open() : settingsSheet.close()
    onLoggedPhotosPresentedChanged: loggedPhotosPresented ? loggedPhotosSheet.open() : loggedPhotosSheet.close()

    // Keyboard: +/- zoom.
    focus: true
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Plus || event.key === Qt.Key_Equal) {
            CameraController.incrementZoom();
            event.accepted = true;
        } else if (event.key === Qt.Key_Minus) {
            CameraController.decrementZoom();
            event.accepted = true;
        }
    }

    Connections {
        target: CameraController
        function onExposureLogged(success) {
            if (success)
                Haptics.notifySuccess();
            else
                Haptics.notifyError();
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    CameraErrorAlert {
        id: errorAlert
        errorText: CameraController.setUpErrorText
        onRetryRequested: content.setUpCamera()
    }

    SettingsView {
        id: settingsSheet
        onClosed: content.settingsPresented = false
    }

    LoggedPhotosView {
        id: loggedPhotosSheet
        onClosed: content.loggedPhotosPresented = false
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        // Mode, hold, profile, settings.
        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing
            Layout.rightMargin: Theme.spacing
            Layout.preferredHeight: 48
            spacing: Theme.spacing

            ModePicker {
                objectName: "modePicker"
            }

            ToolButton {
                id: hold
                objectName: "hold"
                checkable: true
                checked: Meter.hold
                Accessible.name: qsTrId("accessibility.hold")
                contentItem: Item {
                    implicitWidth: 24
                    implicitHeight: 24
                    LockIcon {
                        anchors.centerIn: parent
                        locked: Meter.hold
                        color: Meter.hold ? Theme.appYellow : Theme.foreground
                    }
                }
                onToggled: {
                    checked = Qt.binding(() => Meter.hold);
                    content.toggleHold();
                }
            }

            Item {
                Layout.fillWidth: true
            }

            ProfilePicker {
                Layout.maximumWidth: content.width * 0.45
            }

            ToolButton {
                text: "\u2699"
                font.pixelSize: 22
                Accessible.name: qsTrId("settings")
                onClicked: content.settingsPresented = !content.settingsPresented
            }
        }

        CameraPreview {
            id: preview
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: 160
            simulated: !CameraController.hasSession

            // The computed exposure, with the light value it comes from.
            Rectangle {
                anchors.top: parent.top
                anchors.horizontalCenter: parent.horizontalCenter
                anchors.topMargin: Theme.spacing
                width: readout.implicitWidth + 2 * Theme.margin
                height: readout.implicitHeight + Theme.spacing
                radius: height / 2
                color: Theme.scrim

                Row {
                    id: readout
                    anchors.centerIn: parent
                    spacing: Theme.spacing

                    Text {
                        id: computedValue
                        text: content.manual ? Meter.manualExposure.signedDisplay : content.shutterPriority ? "\u0192/" + Meter.aperture.display : Meter.speed.display
                        color: content.exposureError ? Theme.error : Theme.appYellow
                        font.pixelSize: Theme.computedSize
                        font.bold: true
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                    Text {
                        anchors.baseline: computedValue.baseline
                        text: Meter.lightValueText
                        color: Theme.secondary
                        font.pixelSize: Theme.captionSize
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                    Text {
                        anchors.baseline: computedValue.baseline
                        visible: content.exposureError && !content.manual
                        text: Meter.exposureError === Exposure.Overexposed ? "\u25b2" : "\u25bc"
                        color: Theme.error
                        font.pixelSize: Theme.valueSize
                        Accessible.role: Accessible.StaticText
                        Accessible.name: Meter.exposureError === Exposure.Overexposed ? qsTrId("accessibility.overexposed") : qsTrId("accessibility.underexposed")
                    }
                }
            }

            ZoomView {
                anchors.bottom: parent.bottom
                anchors.bottomMargin: Theme.margin
                anchors.horizontalCenter: parent.horizontalCenter
                model: CameraController.zoomOptions
                onSelectionChanged: Haptics.selectionChanged()
            }

            // The pinch zooms past the presets; letting go keeps the zoom.
            PinchHandler {
                id: pinch
                target: null
                onActiveScaleChanged: {
                    if (active)
                        CameraController.interactiveZoomFactor = activeScale;
                }
                onActiveChanged: {
                    if (!active)
                        CameraController.commitInteractiveZoom();
                }
            }
            WheelHandler {
                acceptedModifiers: Qt.ControlModifier
                onWheel: event => event.angleDelta.y > 0 ? CameraController.incrementZoom() : CameraController.decrementZoom()
            }
        }

        // The values the photographer sets, and the one the mode computes.
        ColumnLayout {
            Layout.fillWidth: true
            Layout.topMargin: Theme.spacing
            spacing: 2

            ExposureStrip {
                id: apertureStrip
                Layout.fillWidth: true
                values: Meter.apertureScale
                title: qsTrId("accessibility.aperture")
                currentText: Meter.aperture.display
                computed: content.shutterPriority
                error: content.exposureError
            }
            ExposureStrip {
                id: speedStrip
                Layout.fillWidth: true
                values: Meter.speedScale
                title: qsTrId("accessibility.shutterSpeed")
                currentText: Meter.speed.display
                computed: !content.shutterPriority && !content.manual
                error: content.exposureError
            }
            ExposureStrip {
                id: isoStrip
                Layout.fillWidth: true
                values: Meter.isoScale
                title: qsTrId("accessibility.iso")
                currentText: Meter.iso.display
            }
            ExposureIndicator {
                Layout.alignment: Qt.AlignHCenter
                Layout.preferredWidth: 12
                Layout.preferredHeight: 10
                color: content.exposureError ? Theme.error : Theme.appYellow
                Accessible.ignored: true
            }
            ManualExposureView {
                Layout.alignment: Qt.AlignHCenter
                visible: content.manual
                values: Meter.manualScale
                exposureError: Meter.exposureError
                currentText: Meter.manualExposure.signedDisplay
            }
        }

        // Logged photos, log, compensation.
        RowLayout {
            Layout.fillWidth: true
            Layout.margins: Theme.margin
            spacing: Theme.margin

            ToolButton {
                Layout.preferredWidth: 120
                Accessible.name: qsTrId("accessibility.photoalbum")
                contentItem: Item {
                    implicitWidth: 24
                    implicitHeight: 20
                    AlbumIcon {
                        anchors.centerIn: parent
                    }
                }
                onClicked: content.loggedPhotosPresented = !content.loggedPhotosPresented
            }

            Item {
                Layout.fillWidth: true
                implicitHeight: logButton.implicitHeight

                RoundButton {
                    id: logButton
                    anchors.centerIn: parent
                    width: 68
                    height: 68
                    text: qsTrId("button.save")
                    font.pixelSize: Theme.bodySize
                    font.bold: true
                    font.capitalization: Font.MixedCase
                    Accessible.name: text
                    onClicked: content.logExposure()
                }
            }

            CompensationControl {
                id: compensation
                Layout.preferredWidth: 120
                values: Meter.compensationScale
                currentText: Meter.compensation.signedDisplay
                changed: Meter.compensation.value !== 0
            }
        }
    }
}
