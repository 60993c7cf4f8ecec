import QtQuick
import QtQuick.Shapes
import Kestrum

// A padlock, its shackle swung open while `locked` is false.
Shape {
    id: icon

    property bool locked: false
    property color color: Theme.foreground

    implicitWidth: 18
    implicitHeight: 22

    ShapePath {
        strokeColor: icon.color
        strokeWidth: 2
        fillColor: Theme.clear
        capStyle: ShapePath.RoundCap
        // The shackle: up from the body, over, and down into it; open, its left leg is
        // lifted clear of the body.
        startX: icon.width * 0.25
        startY: icon.locked ? icon.height * 0.45 : icon.height * 0.3
        PathLine {
            x: icon.width * 0.25
            y: icon.height * 0.3
        }
        PathArc {
            x: icon.width * 0.75
            y: icon.height * 0.3
            radiusX: icon.width * 0.25
            radiusY: icon.width * 0.25
        }
        PathLine {
            x: icon.width * 0.75
            y: icon.height * 0.45
        }
    }
    ShapePath {
        strokeWidth: 0
        strokeColor: Theme.clear
        fillColor: icon.color
        startX: 0
        startY: icon.height * 0.45
        PathLine {
            x: icon.width
            y: icon.height * 0.45
        }
        PathLine {
            x: icon.width
            y: icon.height
        }
        PathLine {
            x: 0
            y: icon.height
        }
        PathLine {
            x: 0
            y: icon.height * 0.45
        }
    }
}
