import QtQuick
import QtQuick.Shapes

// The pointer that marks the metered value on a scale: a square with a peak on top, its tip
// at the middle of the top edge and its shoulders a third of the way down.
Item {
    id: indicator

    required property color color

    // The outline in the item's own coordinates, tip first and last; the shape draws exactly
    // these points, so they are what a layout or a test can rely on.
    readonly property var points: [Qt.point(width / 2, 0), Qt.point(0, height / 3), Qt.point(0, height), Qt.point(width, height), Qt.point(width, height / 3), Qt.point(width / 2, 0)]

    Shape {
        anchors.fill: parent
        // Shapes have no edge antialiasing of their own: a multisampled layer smooths them.
        layer.enabled: true
        layer.samples: 4

        ShapePath {
            fillColor: indicator.color
            strokeWidth: -1
            // Qt 6.4's OpenGL triangulation loses some simple outlines under the default
            // odd-even rule (this triangle among them); a simple outline fills the same under
            // either rule.
            fillRule: ShapePath.WindingFill

            PathPolyline {
                path: indicator.points
            }
        }
    }
}
