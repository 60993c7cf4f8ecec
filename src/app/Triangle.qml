import QtQuick
import QtQuick.Shapes

// A triangle pointing down, its base the top edge of the item and its tip the middle of
// the bottom edge.
Item {
    id: triangle

    required property color color

    // The outline in the item's own coordinates, closed on the first corner; the shape draws
    // exactly these points.
    readonly property var points: [Qt.point(0, 0), Qt.point(width, 0), Qt.point(width / 2, height), Qt.point(0, 0)]

    Shape {
        anchors.fill: parent
        // Shapes have no edge antialiasing of their own: a multisampled layer smooths them.
        layer.enabled: true
        layer.samples: 4

        ShapePath {
            fillColor: triangle.color
            strokeWidth: -1
            // Qt 6.4's OpenGL triangulation loses some simple outlines under the default
            // odd-even rule (this triangle among them); a simple outline fills the same under
            // either rule.
            fillRule: ShapePath.WindingFill

            PathPolyline {
                path: triangle.points
            }
        }
    }
}
