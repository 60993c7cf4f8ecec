import QtQuick
import QtQuick.Controls
import QtTest
import Kestrum
import KestrumTest

// The logged-photos sheet on an album of one photo, taken at the Sydney Opera House:
// pictures of each mode and of the detail, with the rules checked on the way.
Item {
    id: stage
    width: 390
    height: 844

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    LoggedPhotosView {
        id: sheet
    }

    TestCase {
        id: test
        name: "BrowserScreens"
        when: windowShown

        function shoot(name) {
            waitForRendering(stage);
            grabImage(stage).save(Harness.screenshotDir + "/" + name + ".png");
        }

        function test_modesAndDetail() {
            sheet.open();
            tryCompare(sheet, "position", 1);
            const grid = findChild(sheet.contentItem, "grid");
            tryCompare(grid, "count", 1);
            tryCompare(grid.itemAtIndex(0), "status", Image.Ready);
            shoot("browser-grid");
            mouseClick(findChild(sheet.contentItem, "mode1"));
            compare(sheet.displayMode, 1);
            const list = findChild(sheet.contentItem, "list");
            compare(list.itemAtIndex(0).summary, "Aperture 2.8, Shutter speed 1/500s, ISO 200, Exposure compensation +0.33 EV");
            shoot("browser-list");
            mouseClick(findChild(sheet.contentItem, "mode2"));
            verify(LoggedPhotos.hasPositionedPhoto);
            compare(LoggedPhotos.mapCenterLatitude, -33.8568);
            shoot("browser-map");

            // The detail loads the picture and the place name, each on its own.
            mouseClick(findChild(sheet.contentItem, "mode0"));
            mouseClick(grid.itemAtIndex(0));
            tryCompare(sheet.stack, "busy", false);
            const detail = sheet.stack.currentItem;
            tryCompare(findChild(detail, "picture"), "status", Image.Ready);
            tryCompare(findChild(detail, "placeName"), "text", "Opera House, Sydney");
            shoot("browser-detail");
            sheet.stack.pop(null, StackView.Immediate);
        }
    }
}
