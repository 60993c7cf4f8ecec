import QtQuick
import Kestrum

// The camera's zoom presets over the preview, one capsule per option in the model's order;
// tapping one makes it current. A screen reader meets the row as one slider over the
// options, and the arrow keys step through them.
FocusScope {
    id: zoomView

    required property ZoomOptionModel model

    // The user chose another option (a tap, a key or a screen reader); the screen answers
    // with a selection haptic.
    signal selectionChanged

    // What a screen reader reads (Qt's slider element reads these names): the current
    // option's row among minimumValue … maximumValue, and its title.
    readonly property int value: model.currentIndex
    readonly property int minimumValue: 0
    readonly property int maximumValue: options.count - 1
    readonly property string valueText: (options.currentItem as ZoomOptionButton)?.title ?? ""

    // Makes the option at `index` current; out of range or unchanged does nothing.
    function select(index) {
        if (index < minimumValue || index > maximumValue || index === model.currentIndex)
            return;
        model.currentIndex = index;
        if (model.currentIndex === index)
            selectionChanged();
    }

    // A screen reader's Increase and Decrease (one option on or back): Qt offers them for the
    // slider role and calls these functions by name.
    function accessibleIncreaseAction() {
        select(value + 1);
    }
    function accessibleDecreaseAction() {
        select(value - 1);
    }

    implicitWidth: options.contentWidth
    implicitHeight: options.contentItem.childrenRect.height
    activeFocusOnTab: true

    Accessible.role: Accessible.Slider
    Accessible.name: qsTrId("accessibility.zoom")
    Accessible.description: valueText
    Accessible.focusable: true
    Keys.onLeftPressed: select(value - 1)
    Keys.onRightPressed: select(value + 1)

    ListView {
        id: options
        anchors.fill: parent
        // Holds the keyboard focus for the row, so that the options can show it.
        focus: true
        orientation: ListView.Horizontal
        interactive: false
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        model: zoomView.model
        currentIndex: zoomView.value

        delegate: ZoomOptionButton {
            id: option
            objectName: "zoomOption" + index
            required property int index
            selected: option.ListView.isCurrentItem
            keyboardFocus: option.ListView.view.activeFocus
            Accessible.ignored: true
        }
    }

    TapHandler {
        // Holds the tap from the press on, so the preview underneath does not take it too.
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: eventPoint => {
            const point = zoomView.mapToItem(options.contentItem, eventPoint.position);
            zoomView.select(options.indexAt(point.x, point.y));
        }
    }
}
