import QtQuick
import QtTest
import Kestrum
import KestrumTest

// The main screen's own controls over the mock camera (a steady LV 10) and the default
// profile.
Item {
    id: stage
    width: 390
    height: 844

    Component {
        id: contentComponent
        ContentView {
            width: 390
            height: 844
        }
    }

    SignalSpy {
        id: logged
        target: CameraController
        signalName: "exposureLogged"
    }

    TestCase {
        id: test
        name: "MainScreen"
        when: windowShown

        function init() {
            Meter.mode = Exposure.AperturePriority;
            Meter.hold = false;
            Harness.clearRecords();
        }

        function test_holdTogglesWithATick() {
            const content = createTemporaryObject(contentComponent, stage);
            waitForRendering(content);
            const hold = findChild(content, "hold");
            mouseClick(hold);
            verify(Meter.hold);
            verify(hold.checked);
            compare(Harness.haptics, ["selection"]);
            mouseClick(hold);
            verify(!Meter.hold);
            verify(!hold.checked);
        }

        function test_modeMenuSetsTheMode_data() {
            return [{
                    "tag": "shutter priority",
                    "row": 1,
                    "mode": Exposure.ShutterPriority,
                    "speedComputed": false,
                    "apertureComputed": true
                }, {
                    "tag": "manual",
                    "row": 2,
                    "mode": Exposure.Manual,
                    "speedComputed": false,
                    "apertureComputed": false
                }, {
                    "tag": "aperture priority",
                    "row": 0,
                    "mode": Exposure.AperturePriority,
                    "speedComputed": true,
                    "apertureComputed": false
                }];
        }
        function test_modeMenuSetsTheMode(data) {
            const content = createTemporaryObject(contentComponent, stage);
            waitForRendering(content);
            const menu = findChild(content, "modeMenu");
            mouseClick(findChild(content, "modePicker"));
            tryCompare(menu, "opened", true);
            const item = menu.itemAt(data.row);
            mouseClick(item);
            compare(Meter.mode, data.mode);
            compare(content.speedStrip.computed, data.speedComputed);
            compare(content.apertureStrip.computed, data.apertureComputed);
        }

        function test_profilePickerSwitchesTheProfile() {
            AppSettings.profiles.add();
            const content = createTemporaryObject(contentComponent, stage);
            waitForRendering(content);
            const picker = findChild(content, "profilePicker");
            tryCompare(picker, "count", 2);
            compare(picker.displayText, "Default");
            // Chooses row `row` of the open list.
            function choose(row) {
                mouseClick(picker);
                tryCompare(picker.popup, "opened", true);
                const item = picker.popup.contentItem.itemAtIndex(row);
                compare(item.text, row === 0 ? "Default" : "Untitled");
                mouseClick(item);
                tryCompare(picker.popup, "visible", false);
            }
            choose(1);
            verify(AppSettings.currentProfileID !== "default");
            choose(0);
            compare(AppSettings.currentProfileID, "default");
            compare(picker.displayText, "Default");
            AppSettings.profiles.remove(1);
        }

        function test_logEndsWithTheSuccessHaptic() {
            const content = createTemporaryObject(contentComponent, stage);
            waitForRendering(content);
            logged.clear();
            content.logExposure();
            logged.wait();
            compare(Harness.haptics, ["success"]);
        }

        function test_lightValueReadOut() {
            compare(Meter.lightValueText, "LV 10.0");
        }
    }
}
