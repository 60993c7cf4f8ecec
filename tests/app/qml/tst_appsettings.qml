import QtQuick
import QtTest
import Kestrum
import KestrumTest

// The settings screen's app icon picker, feedback mail and Camera section, over the
// launcher's entry, the window and the mail program in memory.
TestCase {
    id: test
    name: "AppSettings"

    RoleTexts {
        id: names
        model: AppSettings.appIcons
        role: "name"
    }
    RoleTexts {
        id: current
        model: AppSettings.appIcons
        role: "isCurrent"
    }
    RoleTexts {
        id: previews
        model: AppSettings.appIcons
        role: "previewSource"
    }

    // A picture of each icon, as the picker shows them.
    Repeater {
        id: pictures
        model: AppSettings.appIcons
        delegate: Image {
            required property url previewSource
            source: previewSource
            sourceSize: Qt.size(64, 64)
        }
    }

    function test_iconPicker() {
        const icons = AppSettings.appIcons;
        compare(names.joined(), "Light Dark Yellow Classic");
        compare(previews.joined().split(" ")[1], "qrc:/kestrum/icons/Dark.svg");
        compare(pictures.count, 4);
        for (let i = 0; i < pictures.count; ++i)
            compare(pictures.itemAt(i).status, Image.Ready, names.joined().split(" ")[i]);
        compare(icons.currentIndex, 0);
        icons.currentIndex = 2;
        compare(current.joined(), "false false true false");
        compare(Harness.launcherIcon(), "Yellow");
        compare(Harness.windowIcons(), [":/kestrum/icons/Yellow.svg"]);
        icons.currentIndex = 0;
        compare(Harness.launcherIcon(), "");
        compare(Harness.windowIcons()[1], ":/kestrum/icons/Light.svg");
        icons.currentIndex = 4;
        compare(icons.currentIndex, 0);
    }

    function test_feedbackMail() {
        tryCompare(AppSettings, "canSendEmail", true);
        verify(AppSettings.sendFeedback());
        compare(Harness.mailSubjects(), ["Feedback Kestrum"]);
    }

    // The mock camera has no calibration: the section is hidden.
    function test_noCameraSectionOnTheMockCamera() {
        verify(!CameraCalibration.available);
        compare(CameraCalibration.calibrationCount, 19);
        compare(CameraCalibration.calibrationText, "0 EV");
        compare(CameraCalibration.calibrationTextAt(8), "\u2212\u2153 EV");
    }
}
