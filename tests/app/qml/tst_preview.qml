import QtQuick
import QtTest
import Kestrum
import KestrumTest

// The preview in a square view, before any frame: the picture is taken to be 1080 × 1440
// points, so it fills the 390-point width at 0.3611 and overhangs 65 points above and
// below (520 points tall).
Item {
    id: stage
    width: 390
    height: 844

    Component {
        id: previewComponent
        CameraPreview {
            width: 390
            height: 390
            simulated: false
        }
    }

    Component {
        id: contentComponent
        ContentView {
            width: 390
            height: 844
        }
    }

    TestCase {
        id: test
        name: "Preview"
        when: windowShown

        function init() {
            Harness.clearRecords();
            // Lets any marker or outline of an earlier test run out.
            Harness.advance(5000);
        }

        function fuzzyComparePoint(actual, x, y) {
            fuzzyCompare(actual.x, x, 0.0001);
            fuzzyCompare(actual.y, y, 0.0001);
        }

        function test_tapMetersAtTheTappedPoint_data() {
            return [{
                    "tag": "centre",
                    "x": 195,
                    "y": 195,
                    "deviceX": 0.5,
                    "deviceY": 0.5
                }, {
                    "tag": "top left corner, under the overhang",
                    "x": 0,
                    "y": 0,
                    "deviceX": 0,
                    "deviceY": 0.125
                }, {
                    "tag": "bottom right corner",
                    "x": 390,
                    "y": 390,
                    "deviceX": 1,
                    "deviceY": 0.875
                }, {
                    "tag": "left of centre, a quarter down",
                    "x": 97.5,
                    "y": 65,
                    "deviceX": 0.25,
                    "deviceY": 0.25
                }];
        }
        function test_tapMetersAtTheTappedPoint(data) {
            const preview = createTemporaryObject(previewComponent, stage);
            preview.meterAt(Qt.point(data.x, data.y));
            compare(Harness.exposedPoints.length, 1);
            fuzzyComparePoint(Harness.exposedPoints[0], data.deviceX, data.deviceY);
            compare(Harness.exposedMonitoring[0], true);
        }

        function test_tapShowsTheMarkerUntilItFades() {
            const preview = createTemporaryObject(previewComponent, stage);
            mouseClick(preview, 100, 200);
            compare(Harness.exposedPoints.length, 1);
            fuzzyComparePoint(Harness.exposedPoints[0], 100 / 390, 265 / 520);
            compare(PreviewOverlays.markerPhase, PreviewOverlays.Shown);
            compare(Qt.rect(PreviewOverlays.markerX, PreviewOverlays.markerY, PreviewOverlays.markerSide, PreviewOverlays.markerSide), Qt.rect(70, 170, 60, 60));
            Harness.advance(1999);
            compare(PreviewOverlays.markerPhase, PreviewOverlays.Shown);
            Harness.advance(1);
            compare(PreviewOverlays.markerPhase, PreviewOverlays.Fading);
            Harness.advance(300);
            compare(PreviewOverlays.markerPhase, PreviewOverlays.Hidden);
        }

        // The detector's box (0.25, 0.5, 0.5, 0.25) runs down from the picture's top and
        // in from its right edge: in the picture it is (0.25, 0.25, 0.25, 0.5), the
        // horizontal place mirrored (1 − 0.5 − 0.25). That is (270, 360, 270, 720) in the
        // reference frame and (97.5, 130, 97.5, 260) at 0.3611, 65 points up in the view.
        // It meters at its centre, device (0.375, 0.5).
        function test_faceMetersAtTheMirroredCentre() {
            const preview = createTemporaryObject(previewComponent, stage);
            Harness.observeFace(Qt.rect(0.25, 0.5, 0.5, 0.25));
            compare(Harness.exposedPoints.length, 1);
            fuzzyComparePoint(Harness.exposedPoints[0], 0.375, 0.5);
            compare(Harness.exposedMonitoring[0], false);
            fuzzyCompare(preview.faceOutline.x, 97.5, 0.001);
            fuzzyCompare(preview.faceOutline.y, 65, 0.001);
            fuzzyCompare(preview.faceOutline.width, 97.5, 0.001);
            fuzzyCompare(preview.faceOutline.height, 260, 0.001);
            fuzzyCompare(preview.geometry.faceCornerRadius(preview.faceOutline), 12.1875, 0.001);
        }

        function test_outlineStaysWhileFacesArrive() {
            createTemporaryObject(previewComponent, stage);
            Harness.observeFace(Qt.rect(0.25, 0.5, 0.5, 0.25));
            verify(PreviewOverlays.faceOutlineVisible);
            Harness.advance(400);
            Harness.observeFace(Qt.rect(0.3, 0.5, 0.5, 0.25));
            Harness.advance(499);
            verify(PreviewOverlays.faceOutlineVisible);
            Harness.advance(1);
            verify(!PreviewOverlays.faceOutlineVisible);
            // Every face metered; faces leave no tap marker.
            compare(Harness.exposedPoints.length, 2);
            compare(PreviewOverlays.markerPhase, PreviewOverlays.Hidden);
        }

        function test_pinchZoomsAndCommitsOnRelease() {
            const content = createTemporaryObject(contentComponent, stage);
            const preview = content.preview;
            // The layout gives the preview its place before the fingers land.
            waitForRendering(content);
            const touch = touchEvent(preview);
            // Two fingers 100 points apart open to 400. Where the pinch takes hold depends
            // on when the events are handled, so the scale is only known to have grown.
            touch.press(0, preview, 150, 200).press(1, preview, 250, 200).commit();
            for (let d = 10; d <= 150; d += 10)
                touch.move(0, preview, 150 - d, 200).move(1, preview, 250 + d, 200).commit();
            verify(content.pinchScale > 1.2);
            fuzzyCompare(CameraController.interactiveZoomFactor, content.pinchScale, 0.0001);
            compare(Harness.zoomCommits, 0);
            touch.release(0, preview, 0, 200).release(1, preview, 400, 200).commit();
            compare(Harness.zoomCommits, 1);
        }
    }
}
