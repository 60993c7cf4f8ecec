import QtQuick
import QtTest
import Kestrum

// The album with one logged photo: ISO 200, f/2.8, 1/500 s, +0.33 EV, at the Sydney Opera
// House on 1 June 2025 at 10:15 UTC.
TestCase {
    id: test
    name: "LoggedPhotos"

    Repeater {
        id: photos
        model: LoggedPhotos
        delegate: Item {
            required property string localIdentifier
            required property string aperture
            required property string speed
            required property string iso
            required property string compensation
            required property date date
            required property bool hasCoordinate
            required property double latitude
            required property double longitude
            required property url previewSource
            required property url fullSizeSource
        }
    }

    Image {
        id: thumbnail
        asynchronous: true
        sourceSize.width: 32
    }

    Image {
        id: fullSize
        asynchronous: true
    }

    function init() {
        tryCompare(photos, "count", 1);
    }

    function test_displayTexts() {
        const photo = photos.itemAt(0);
        compare([photo.iso, photo.aperture, photo.speed, photo.compensation].join(" "), "200 2.8 1/500s +0.33 EV");
        compare(photo.date.toISOString(), "2025-06-01T10:15:00.000Z");
        verify(photo.hasCoordinate);
        compare(photo.latitude.toFixed(4), "-33.8568");
    }

    function test_picturesAtTheirSizes() {
        const photo = photos.itemAt(0);
        thumbnail.source = photo.previewSource;
        tryCompare(thumbnail, "status", Image.Ready);
        compare(thumbnail.implicitWidth, 32);
        compare(thumbnail.implicitHeight, 24);
        fullSize.source = photo.fullSizeSource;
        tryCompare(fullSize, "status", Image.Ready);
        compare(fullSize.implicitWidth, 64);
        fullSize.source = "image://loggedphotos/full/not-there.jpeg";
        tryCompare(fullSize, "status", Image.Error);
    }

    function test_placeName() {
        const photo = photos.itemAt(0);
        const place = LoggedPhotos.placeName(photo.latitude, photo.longitude);
        tryCompare(place, "finished", true);
        compare(place.text, "Opera House, Sydney");
    }
}
