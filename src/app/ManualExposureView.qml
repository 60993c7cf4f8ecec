import QtQuick
import Kestrum

// How far the photographer's own settings are from a correct exposure, in manual mode:
// a scale of stops with a marker at the nearest entry, red with an exposure error, and a
// red mark beyond the end of the scale on the side that ran out.
Item {
    id: view

    // The compensation scale the deviation is shown on; its currentIndex is the entry
    // nearest to the deviation.
    required property ExposureScaleModel values
    required property int exposureError
    // The deviation's text with its sign: "−1⅓".
    required property string currentText

    readonly property string value: currentText

    implicitWidth: geometry.count * geometry.entryPoints + 2 * 24
    implicitHeight: 44

    Accessible.role: Accessible.Indicator
    Accessible.name: qsTrId("accessibility.manual")
    Accessible.description: currentText

    ManualScaleGeometry {
        id: geometry
        count: view.values.count
        currentIndex: Math.max(0, view.values.currentIndex)
        error: view.exposureError
    }

    readonly property real centreX: width / 2

    Triangle {
        id: marker
        width: 6
        height: 10
        x: view.centreX + geometry.markerOffset - width / 2
        y: 2
        color: geometry.hasErrorMark ? Theme.error : Theme.appYellow

        Behavior on x  {
            NumberAnimation {
                duration: 200
                easing.type: Easing.OutCubic
            }
        }
    }

    Repeater {
        model: view.values

        // The delegate reaches the control by its id, a scope that qmllint of Qt 6.4 does
        // not follow into delegates.
        // qmllint disable unqualified
        delegate: Item {
            id: tick
            required property int index
            required property double value
            required property string signedDisplay

            readonly property bool wholeStop: Math.abs(value - Math.round(value)) < 0.01
            // Every other whole stop is labelled, so that the labels keep apart.
            readonly property bool labelled: wholeStop && Math.round(value) % 2 === 0

            x: view.centreX + (index - (view.values.count - 1) / 2) * geometry.entryPoints - width / 2
            y: 14
            width: geometry.entryPoints
            height: 28

            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 1
                height: tick.wholeStop ? 8 : 4
                color: Theme.secondary
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                y: 10
                visible: tick.labelled
                text: tick.signedDisplay
                color: Theme.secondary
                font.pixelSize: Theme.captionSize
            }
        }
        // qmllint enable unqualified
    }

    Text {
        visible: geometry.hasErrorMark
        x: view.centreX + geometry.errorMarkOffset - width / 2
        y: 10
        text: "!"
        color: Theme.error
        font.pixelSize: 14
        font.bold: true
        Accessible.role: Accessible.StaticText
        Accessible.name: view.exposureError === Exposure.Overexposed ? qsTrId("accessibility.overexposed") : qsTrId("accessibility.underexposed")
    }
}
