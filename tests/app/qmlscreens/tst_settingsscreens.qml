import QtQuick
import QtQuick.Controls
import QtTest
import Kestrum
import KestrumTest

// The settings sheet as the photographer meets it: pictures of each screen are saved for
// people to look at, and the profile screens' rules are checked on the way.
Item {
    id: stage
    width: 390
    height: 844

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    SettingsView {
        id: sheet
    }

    TestCase {
        id: test
        name: "SettingsScreens"
        when: windowShown

        function shoot(name) {
            waitForRendering(stage);
            grabImage(stage).save(Harness.screenshotDir + "/" + name + ".png");
        }

        function test_settingsAndProfiles() {
            sheet.open();
            tryCompare(sheet, "position", 1);
            shoot("settings");
            mouseClick(findChild(sheet.contentItem, "profilesRow"));
            tryCompare(sheet.stack, "busy", false);
            verify(sheet.stack.currentItem instanceof ProfilesPage);
            mouseClick(findChild(sheet.contentItem, "addProfile"));
            tryCompare(AppSettings.profiles, "count", 2);
            shoot("profiles");
            mouseClick(findChild(sheet.contentItem, "edit"));
            verify(sheet.stack.currentItem.editing);
            shoot("profiles-editing");
            mouseClick(findChild(sheet.contentItem, "edit"));

            // The built-in profile keeps its name: no name field.
            const list = findChild(sheet.contentItem, "profileList");
            mouseClick(list.itemAtIndex(0));
            tryCompare(sheet.stack, "busy", false);
            const defaultEditor = sheet.stack.currentItem;
            compare(defaultEditor.title, "Default");
            verify(!findChild(defaultEditor, "nameField").visible);
            shoot("profile-default");
            sheet.stack.pop();
            tryCompare(sheet.stack, "busy", false);

            // Another profile: named in its editor, opening with the defaults.
            mouseClick(list.itemAtIndex(1));
            tryCompare(sheet.stack, "busy", false);
            const editor = sheet.stack.currentItem;
            const nameField = findChild(editor, "nameField");
            verify(nameField.visible);
            compare(nameField.text, "Untitled");
            compare(editor.profile.minimumISO.display, "50");
            compare(editor.profile.maximumISO.display, "1600");
            compare(editor.profile.minimumAperture.display, "1.4");
            compare(editor.profile.maximumAperture.display, "22");
            compare(editor.profile.minimumSpeed.display, "4s");
            compare(editor.profile.maximumSpeed.display, "1000");
            compare(editor.profile.fractionForISO, Exposure.Full);
            mouseClick(nameField);
            nameField.selectAll();
            keyClick(Qt.Key_Delete);
            for (const key of [Qt.Key_X, Qt.Key_P, Qt.Key_A, Qt.Key_N])
                keyClick(key);
            // Stored at once, under the same id.
            compare(Harness.storedProfileNames(), ["Default", "xpan"]);
            compare(editor.title, "xpan");
            shoot("profile-other");
            sheet.stack.pop(null, StackView.Immediate);
            AppSettings.profiles.remove(1);
        }
    }
}
