import QtQuick
import QtTest
import Kestrum
import KestrumTest

// The logged-photos sheet once the album is empty: each mode says so.
Item {
    id: stage
    width: 390
    height: 844

    LoggedPhotosView {
        id: sheet
    }

    TestCase {
        name: "EmptyBrowser"
        when: windowShown

        function test_emptyTexts_data() {
            return [{
                    "tag": "grid",
                    "mode": 0,
                    "text": "No logged photos yet. Press Log to keep a reading with its picture."
                }, {
                    "tag": "list",
                    "mode": 1,
                    "text": "No logged photos yet. Press Log to keep a reading with its picture."
                }, {
                    "tag": "map",
                    "mode": 2,
                    "text": "No logged photo has a position"
                }];
        }
        function test_emptyTexts(data) {
            Harness.emptyAlbum();
            tryCompare(LoggedPhotos, "count", 0);
            verify(!LoggedPhotos.hasPositionedPhoto);
            sheet.open();
            sheet.displayMode = data.mode;
            const page = findChild(sheet.contentItem, ["grid", "list", "map"][data.mode]);
            const empty = findChild(page, "emptyText");
            tryCompare(empty, "visible", true);
            compare(empty.text, data.text);
        }
    }
}
