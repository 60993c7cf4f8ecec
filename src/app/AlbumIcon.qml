import QtQuick
import QtQuick.Shapes
import Kestrum

// A framed picture of hills: the logged photos.
Shape {
    id: icon

    property color color: Theme.foreground

    implicitWidth: 24
    implicitHeight: 20

    ShapePath {
        strokeColor: icon.color
        strokeWidth: 2
        fillColor: Theme.clear
        joinStyle: ShapePath.RoundJoin
        startX: 1
        startY: 1
        PathLine {
            x: icon.width - 1
            y: 1
        }
        PathLine {
            x: icon.width - 1
            y: icon.height - 1
        }
        PathLine {
            x: 1
            y: icon.height - 1
        }
        PathLine {
            x: 1
            y: 1
        }
    }
    ShapePath {
        strokeWidth: 0
        strokeColor: Theme.clear
        fillColor: icon.color
        startX: 3
        startY: icon.height - 3
        PathLine {
            x: icon.width * 0.4
            y: icon.height * 0.4
        }
        PathLine {
            x: icon.width * 0.6
            y: icon.height * 0.65
        }
        PathLine {
            x: icon.width * 0.72
            y: icon.height * 0.5
        }
        PathLine {
            x: icon.width - 3
            y: icon.height - 3
        }
    }
}
