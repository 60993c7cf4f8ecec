import QtQuick
import QtTest
import Kestrum

// The mock camera of a phone with three lenses: zoom presets 0.5, 1 and 3, 1 current.
TestCase {
    id: test
    name: "Camera"

    RoleTexts {
        id: titles
        model: CameraController.zoomOptions
        role: "title"
    }

    SignalSpy {
        id: logged
        target: CameraController
        signalName: "exposureLogged"
    }

    function test_zoomPresets() {
        const zoom = CameraController.zoomOptions;
        compare(titles.joined(), "0.5 1 3");
        compare(zoom.currentIndex, 1);
        zoom.currentIndex = 2;
        compare(zoom.currentIndex, 2);
        zoom.currentIndex = 7;
        compare(zoom.currentIndex, 2);
    }

    function test_readyToMeter() {
        compare(CameraController.authorizationStatus, CameraController.Authorized);
        verify(CameraController.setUp());
        compare(CameraController.setUpError, CameraController.NoError);
        compare(CameraController.setUpErrorText, "");
        compare(FaceDetector.available, false);
        compare(FaceDetector.observations.length, 0);
    }

    function test_logExposureReports() {
        CameraController.logExposure();
        logged.wait();
        compare(logged.signalArguments[0][0], true);
        compare(logged.signalArguments[0][1], "");
    }
}
