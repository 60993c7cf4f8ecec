import QtQuick
import QtTest
import Kestrum
import KestrumTest

// The preview's parts: the pointer shapes, the zoom presets (over the mock camera's 0.5, 1
// and 3, 1 current), the permission screen and the simulator's picture.
Item {
    id: stage
    width: 390
    height: 844

    Component {
        id: exposureIndicator
        ExposureIndicator {
        }
    }
    Component {
        id: triangle
        Triangle {
        }
    }
    Component {
        id: zoomView
        ZoomView {
        }
    }
    Component {
        id: permissionsView
        PermissionsView {
            width: 390
            height: 844
        }
    }
    Component {
        id: mockCameraView
        MockCameraView {
            width: 390
            height: 844
        }
    }
    Component {
        id: zoomOverPreview
        MockCameraView {
            property alias zoom: overlay
            width: 390
            height: 844
            ZoomView {
                id: overlay
                anchors.centerIn: parent
                model: CameraController.zoomOptions
            }
        }
    }
    Component {
        id: spy
        SignalSpy {
        }
    }

    TestCase {
        id: test
        name: "PreviewViews"
        when: windowShown

        readonly property ZoomOptionModel zoom: CameraController.zoomOptions

        function spyOn(target, signalName) {
            return createTemporaryObject(spy, stage, {
                    "target": target,
                    "signalName": signalName
                });
        }

        function init() {
            zoom.currentIndex = 1;
        }

        function test_shapePoints_data() {
            return [{
                    "tag": "indicator 30×60",
                    "shape": exposureIndicator,
                    "width": 30,
                    "height": 60,
                    "points": "15,0 0,20 0,60 30,60 30,20 15,0",
                    "inside": Qt.point(15, 45),
                    "outside": Qt.point(3, 8)
                }, {
                    "tag": "triangle 30×60",
                    "shape": triangle,
                    "width": 30,
                    "height": 60,
                    "points": "0,0 30,0 15,60 0,0",
                    "inside": Qt.point(15, 15),
                    "outside": Qt.point(3, 50)
                }];
        }

        function test_shapePoints(data) {
            const shape = createTemporaryObject(data.shape, stage, {
                    "width": data.width,
                    "height": data.height,
                    "color": Theme.appYellow
                });
            compare(shape.points.map(p => p.x + "," + p.y).join(" "), data.points);
            // The fill reaches the points inside the outline and no others.
            waitForRendering(shape);
            const image = grabImage(shape);
            verify(Qt.colorEqual(image.pixel(data.inside.x, data.inside.y), Theme.appYellow));
            verify(!Qt.colorEqual(image.pixel(data.outside.x, data.outside.y), Theme.appYellow));
        }

        function test_permissions_data() {
            return [{
                    "tag": "not determined",
                    "status": 0,
                    "asks": true
                }, {
                    "tag": "restricted",
                    "status": 1,
                    "asks": false
                }, {
                    "tag": "denied",
                    "status": 2,
                    "asks": false
                }, {
                    "tag": "authorized",
                    "status": 3,
                    "asks": false
                }];
        }

        function test_permissions(data) {
            const view = createTemporaryObject(permissionsView, stage, {
                    "authorizationStatus": data.status
                });
            const requestButton = findChild(view, "requestButton");
            const settingsButton = findChild(view, "settingsButton");
            const settingsText = findChild(view, "settingsText");
            const requested = spyOn(view, "permissionRequested");
            const settingsRequested = spyOn(view, "openSettingsRequested");
            compare(requestButton.visible, data.asks);
            compare(settingsButton.visible, !data.asks);
            compare(settingsText.visible, !data.asks);
            compare(requestButton.text, "Allow Camera Access");
            compare(settingsButton.text, "Open Settings");
            compare(settingsText.text, "Camera access is turned off for Kestrum. Turn it on in the system settings.");
            mouseClick(data.asks ? requestButton : settingsButton);
            compare(requested.count, data.asks ? 1 : 0);
            compare(settingsRequested.count, data.asks ? 0 : 1);
            if (data.status === 0 || data.status === 2)
                grabImage(view).save(Harness.screenshotDir + "/permission-" + data.tag.replace(" ", "-") + ".png");
        }

        function test_zoomTap_data() {
            return [{
                    "tag": "third",
                    "option": 2,
                    "currentIndex": 2,
                    "selections": 1,
                    "titles": "0.5 1 3×"
                }, {
                    "tag": "first",
                    "option": 0,
                    "currentIndex": 0,
                    "selections": 1,
                    "titles": "0.5× 1 3"
                }, {
                    "tag": "current again",
                    "option": 1,
                    "currentIndex": 1,
                    "selections": 0,
                    "titles": "0.5 1× 3"
                }];
        }

        function test_zoomTap(data) {
            const view = createTemporaryObject(zoomView, stage, {
                    "model": zoom
                });
            const selections = spyOn(view, "selectionChanged");
            mouseClick(findChild(view, "zoomOption" + data.option));
            compare(zoom.currentIndex, data.currentIndex);
            compare(selections.count, data.selections);
            let titles = [];
            for (let i = 0; i < 3; ++i)
                titles.push(findChild(findChild(view, "zoomOption" + i), "title").text);
            compare(titles.join(" "), data.titles);
        }

        // A tap on an option stays there: the preview underneath keeps its picture.
        function test_zoomTapOverPreview() {
            const preview = createTemporaryObject(zoomOverPreview, stage);
            mouseClick(findChild(preview.zoom, "zoomOption0"));
            compare(zoom.currentIndex, 0);
            compare(preview.image, "mock_portrait");
        }

        function test_zoomAccessible() {
            const view = createTemporaryObject(zoomView, stage, {
                    "model": zoom
                });
            const element = Harness.accessible(view);
            compare(element.name, "Zoom");
            compare(element.role, Accessible.Slider);
            compare(element.description, "1");
            compare(element.value, 1);
            compare(element.minimumValue, 0);
            compare(element.maximumValue, 2);
            // The options are not elements of their own.
            compare(element.childCount, 0);
        }

        function test_zoomSteps_data() {
            return [{
                    "tag": "increase past the end",
                    "action": "Increase",
                    "times": 3,
                    "currentIndex": 2,
                    "title": "3"
                }, {
                    "tag": "decrease past the start",
                    "action": "Decrease",
                    "times": 2,
                    "currentIndex": 0,
                    "title": "0.5"
                }, {
                    "tag": "left key past the start",
                    "key": Qt.Key_Left,
                    "times": 4,
                    "currentIndex": 0,
                    "title": "0.5"
                }];
        }

        // One step at a time, and never past the ends: one selection whatever the presses.
        function test_zoomSteps(data) {
            const view = createTemporaryObject(zoomView, stage, {
                    "model": zoom
                });
            const selections = spyOn(view, "selectionChanged");
            if (data.key)
                view.forceActiveFocus();
            for (let i = 0; i < data.times; ++i) {
                if (data.key)
                    keyClick(data.key);
                else
                    verify(Harness.accessibleAction(view, data.action));
            }
            compare(zoom.currentIndex, data.currentIndex);
            compare(selections.count, 1);
            const element = Harness.accessible(view);
            compare(element.value, data.currentIndex);
            compare(element.description, data.title);
        }

        function test_mockCameraToggle_data() {
            return [{
                    "tag": "portrait, tapped",
                    "image": "mock_portrait",
                    "press": false,
                    "next": "mock_landscape"
                }, {
                    "tag": "unknown, tapped",
                    "image": "mock_night",
                    "press": false,
                    "next": "mock_portrait"
                }, {
                    "tag": "portrait, screen reader's press",
                    "image": "mock_portrait",
                    "press": true,
                    "next": "mock_landscape"
                }];
        }

        function test_mockCameraToggle(data) {
            const view = createTemporaryObject(mockCameraView, stage, {
                    "image": data.image
                });
            if (data.press)
                verify(Harness.accessibleAction(view, "Press"));
            else
                mouseClick(view);
            compare(view.image, data.next);
        }

        // Both scenes load from the module's resources.
        function test_mockCameraScenes() {
            const view = createTemporaryObject(mockCameraView, stage);
            const picture = findChild(view, "picture");
            compare(Harness.accessible(view).name, "Simulated camera picture");
            for (const scene of ["mock_portrait", "mock_landscape"]) {
                compare(view.image, scene);
                tryCompare(picture, "status", Image.Ready);
                mouseClick(view);
            }
        }
    }
}
