import QtQuick
import Kestrum

// A strip of the display texts of one scale, dragged or tapped to pick a value. The row
// follows the finger, settles on whole steps when let go (a fling coasts on), ticks once
// per step travelled, and stands grey and still while the mode computes its value.
FocusScope {
    id: strip

    // The entries on offer and the selection; writing its currentIndex picks an entry.
    required property ExposureScaleModel values
    // What the strip picks, for the caption and for screen readers: "Aperture".
    required property string title
    // The selected value's text, shown on its own while it is not on offer.
    required property string currentText
    // The mode computes this value: the strip only shows it.
    property bool computed: false
    // The computed value is out of reach of every entry (an exposure error).
    property bool error: false

    // What a screen reader reads as the slider's value.
    readonly property string value: currentText
    readonly property alias dragging: drag.active
    readonly property real rowOffset: tracker.positionPoints

    // Ends a drag released at `translation` with the finger moving at `velocity` (points
    // and points per second, positive to the right).
    function finishDrag(translation: real, velocity: real) {
        const index = tracker.release(translation, velocity, strip.values.currentIndex, strip.values.count);
        if (index >= 0)
            strip.values.currentIndex = index;
    }

    // Moves the selection by `steps` entries towards the end of the list, held at the ends.
    function step(steps: int) {
        if (strip.computed || strip.values.currentIndex < 0)
            return;
        const index = Math.max(0, Math.min(strip.values.count - 1, strip.values.currentIndex + steps));
        if (index !== strip.values.currentIndex) {
            Haptics.selectionChanged();
            strip.values.currentIndex = index;
        }
    }

    // A screen reader's Increase and Decrease (one entry on or back): Qt offers them for the
    // slider role and calls these functions by name.
    function accessibleIncreaseAction() {
        step(1);
    }
    function accessibleDecreaseAction() {
        step(-1);
    }

    implicitWidth: 320
    implicitHeight: caption.implicitHeight + viewport.height
    activeFocusOnTab: !computed
    enabled: !computed

    Accessible.role: Accessible.Slider
    Accessible.name: title
    Accessible.focusable: true
    Keys.onRightPressed: step(1)
    Keys.onLeftPressed: step(-1)

    StripDragTracker {
        id: tracker
    }

    Text {
        id: caption
        anchors.horizontalCenter: parent.horizontalCenter
        text: strip.title
        color: strip.activeFocus ? Theme.appYellow : Theme.secondary
        font.pixelSize: Theme.captionSize
        font.capitalization: Font.AllUppercase
        Accessible.ignored: true
    }

    Item {
        id: viewport
        anchors.top: caption.bottom
        width: parent.width
        height: 34
        clip: true

        Row {
            id: row
            visible: strip.values.currentIndex >= 0
            // The selected entry stands in the middle; the finger moves the whole row.
            x: viewport.width / 2 - (strip.values.currentIndex + 0.5) * tracker.stepPoints + tracker.positionPoints
            height: viewport.height

            Behavior on x  {
                enabled: !drag.active
                NumberAnimation {
                    duration: 200
                    easing.type: Easing.OutCubic
                }
            }

            Repeater {
                id: entries
                model: strip.values

                // The delegate reaches the control by its id, a scope that qmllint of Qt 6.4 does
                // not follow into delegates.
                // qmllint disable unqualified
                delegate: Text {
                    id: entry
                    required property int index
                    required property string display

                    readonly property bool selected: index === strip.values.currentIndex

                    width: tracker.stepPoints
                    height: row.height
                    text: display
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: Theme.captionSize
                    font.pixelSize: selected ? Theme.valueSize : Theme.bodySize
                    font.bold: selected
                    color: strip.computed ? (selected && strip.error ? Theme.error : Theme.disabled) : selected ? Theme.foreground : Theme.secondary
                    Accessible.ignored: true

                    TapHandler {
                        onTapped: {
                            Haptics.selectionChanged();
                            strip.values.currentIndex = entry.index;
                        }
                    }
                }
                // qmllint enable unqualified
            }
        }

        // A value that is not on offer (the end of the full-stop table, beyond the
        // profile's limits) still shows.
        Text {
            anchors.centerIn: parent
            visible: !row.visible
            text: strip.currentText
            font.pixelSize: Theme.valueSize
            font.bold: true
            color: strip.error ? Theme.error : strip.computed ? Theme.disabled : Theme.foreground
            Accessible.ignored: true
        }

        DragHandler {
            id: drag

            // The release velocity, as last seen while the finger moved.
            property real releaseVelocity: 0
            property real releaseTranslation: 0

            target: null
            yAxis.enabled: false
            dragThreshold: 1
            // The travel since the press, read from the point itself: the handler's own
            // translation lags the move that starts the drag.
            function follow() {
                releaseTranslation = centroid.position.x - centroid.pressPosition.x;
                releaseVelocity = centroid.velocity.x;
                if (tracker.moveTo(releaseTranslation))
                    Haptics.selectionChanged();
            }

            onCentroidChanged: {
                if (active)
                    follow();
            }
            onActiveChanged: {
                if (active)
                    follow();
                else
                    strip.finishDrag(releaseTranslation, releaseVelocity);
            }
            onCanceled: tracker.cancel()
        }
    }
}
