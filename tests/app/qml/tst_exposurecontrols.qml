import QtQuick
import QtTest
import Kestrum
import KestrumTest

// The exposure strips and the compensation control, driven as a finger drives them, on
// the default profile: apertures 1.4 2 2.8 4 5.6 8 11 16 22 with f/2.8 selected, and
// compensation from −3 to +10 in full stops.
Item {
    id: stage
    width: 390
    height: 400

    Component {
        id: stripComponent
        ExposureStrip {
            width: 390
            values: Meter.apertureScale
            title: "Aperture"
            currentText: Meter.aperture.display
        }
    }

    Component {
        id: compensationComponent
        CompensationControl {
            values: Meter.compensationScale
            currentText: Meter.compensation.signedDisplay
            changed: Meter.compensation.value !== 0
        }
    }

    TestCase {
        id: test
        name: "ExposureControls"
        when: windowShown

        function init() {
            Meter.mode = Exposure.AperturePriority;
            Meter.apertureScale.currentIndex = 2;
            Meter.compensationScale.currentIndex = 3; // 0, between −3 and +10
            Harness.clearRecords();
        }

        function ticks() {
            return Harness.haptics.filter(name => name === "selection").length;
        }

        // A finger pressed on the strip's values and moved to each of `points`
        // (translations), a tenth of a second apart, so that letting go does not coast.
        // `atEach` runs after each point is reached.
        function drag(item, points, atEach) {
            const y = item.height - 10;
            const x0 = item.width / 2;
            mousePress(item, x0, y, Qt.LeftButton, Qt.NoModifier, 20);
            for (const x of points) {
                mouseMove(item, x0 + x, y, 100, Qt.LeftButton);
                if (atEach)
                    atEach(x);
            }
            mouseRelease(item, x0 + points[points.length - 1], y, Qt.LeftButton, Qt.NoModifier, 0);
        }

        function test_releaseSettlesOnWholeSteps_data() {
            return [{
                    "tag": "30 left is one step on",
                    "distance": -30,
                    "aperture": "4"
                }, {
                    "tag": "24 right is one step back",
                    "distance": 24,
                    "aperture": "2"
                }, {
                    "tag": "23 right is nothing",
                    "distance": 23,
                    "aperture": "2.8"
                }, {
                    "tag": "held at the start",
                    "distance": 200,
                    "aperture": "1.4"
                }, {
                    "tag": "held at the end",
                    "distance": -400,
                    "aperture": "22"
                }];
        }
        function test_releaseSettlesOnWholeSteps(data) {
            const strip = createTemporaryObject(stripComponent, stage);
            drag(strip, [Math.sign(data.distance), data.distance]);
            compare(Meter.aperture.display, data.aperture);
            compare(strip.rowOffset, 0);
        }

        // A flick of 24 points left, at about 550 points a second when let go, coasts to
        // about −130: three steps on, where a plain release of −24 would go one.
        function test_flingCoastsOn() {
            const strip = createTemporaryObject(stripComponent, stage);
            const y = strip.height - 10;
            const x0 = strip.width / 2;
            mousePress(strip, x0, y, Qt.LeftButton, Qt.NoModifier, 20);
            mouseMove(strip, x0 - 12, y, 19, Qt.LeftButton);
            mouseMove(strip, x0 - 24, y, 19, Qt.LeftButton);
            mouseRelease(strip, x0 - 24, y, Qt.LeftButton, Qt.NoModifier, 0);
            compare(Meter.aperture.display, "8");
        }

        function test_ticksEveryStepFromTheLastTick() {
            const strip = createTemporaryObject(stripComponent, stage);
            const seen = [];
            drag(strip, [1, 46, 48, 94, 96, 50, 48, 40], at => seen.push(at + ":" + ticks()));
            compare(seen.join(" "), "1:0 46:0 48:1 94:1 96:2 50:2 48:3 40:3");
            // Let go at 40 points right: one step back.
            compare(Meter.aperture.display, "2");
        }

        function test_tapSelects() {
            const strip = createTemporaryObject(stripComponent, stage);
            // Two entries right of the middle.
            mouseClick(strip, strip.width / 2 + 2 * 48, strip.height - 10);
            compare(Meter.aperture.display, "5.6");
            compare(ticks(), 1);
        }

        function test_computedStripIgnoresTheFinger() {
            const strip = createTemporaryObject(stripComponent, stage, {
                    "computed": true
                });
            drag(strip, [-1, -100]);
            mouseClick(strip, strip.width / 2 + 48, strip.height - 10);
            compare(Meter.aperture.display, "2.8");
            compare(ticks(), 0);
        }

        function test_screenReaderAdjustsOneEntry() {
            const strip = createTemporaryObject(stripComponent, stage);
            compare(strip.Accessible.role, Accessible.Slider);
            compare(strip.value, "2.8");
            compare(Harness.accessibleActions(strip).filter(name => name === "Increase" || name === "Decrease"), ["Increase", "Decrease"]);
            Harness.accessibleAction(strip, "Increase");
            compare(Meter.aperture.display, "4");
            Harness.accessibleAction(strip, "Decrease");
            Harness.accessibleAction(strip, "Decrease");
            compare(Meter.aperture.display, "2");
        }

        function test_compensationStepsAndTurnsYellow() {
            const control = createTemporaryObject(compensationComponent, stage);
            compare(control.currentText, "0");
            compare(Qt.colorEqual(control.tint, Theme.foreground), true);
            Harness.accessibleAction(control, "Increase");
            verify(Meter.compensation.value > 0);
            compare(Qt.colorEqual(control.tint, Theme.appYellow), true);
            Harness.accessibleAction(control, "Decrease");
            compare(Meter.compensation.value, 0);
        }

        function test_compensationHeldAtTheEnds_data() {
            return [{
                    "tag": "first",
                    "row": 0,
                    "decrement": false,
                    "increment": true
                }, {
                    "tag": "last",
                    "row": Meter.compensationScale.count - 1,
                    "decrement": true,
                    "increment": false
                }];
        }
        function test_compensationHeldAtTheEnds(data) {
            const control = createTemporaryObject(compensationComponent, stage);
            Meter.compensationScale.currentIndex = data.row;
            const before = Meter.compensation.display;
            const stepper = findChild(control, "stepper");
            compare(stepper.decrementEnabled, data.decrement);
            compare(stepper.incrementEnabled, data.increment);
            data.decrement ? Harness.accessibleAction(control, "Increase") : Harness.accessibleAction(control, "Decrease");
            compare(Meter.compensation.display, before);
        }
    }
}
