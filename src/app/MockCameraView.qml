import QtQuick

// What the preview shows in the simulator, where the mock camera gives no frames: one of
// two drawn scenes, filling the view as the live preview would. A tap swaps the scene.
Item {
    id: mockCameraView

    // The scene shown: "mock_portrait" or "mock_landscape".
    property string image: "mock_portrait"

    // Portrait becomes landscape; anything else becomes portrait.
    function toggle() {
        image = image === "mock_portrait" ? "mock_landscape" : "mock_portrait";
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTrId("accessibility.mockCamera")
    Accessible.focusable: true
    Accessible.onPressAction: toggle()
    Keys.onSpacePressed: toggle()

    Image {
        objectName: "picture"
        anchors.fill: parent
        fillMode: Image.PreserveAspectCrop
        // Drawn at the size shown (and the screen's pixel ratio), so the vector scenes stay sharp.
        sourceSize.width: width
        sourceSize.height: height
        asynchronous: true
        source: "qrc:/Kestrum/images/" + mockCameraView.image + ".svg"
    }

    TapHandler {
        onTapped: mockCameraView.toggle()
    }
}
