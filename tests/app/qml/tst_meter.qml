import QtQuick
import QtTest
import Kestrum
import KestrumTest

// The meter on the mock camera (a steady LV 10) and the default profile: ISO 50 to 1600,
// f/1.4 to f/22, 4 s to 1/1000 s, full stops, ISO 100 and f/2.8 to start.
TestCase {
    id: test
    name: "Meter"

    RoleTexts {
        id: apertures
        model: Meter.apertureScale
        role: "display"
    }
    RoleTexts {
        id: isos
        model: Meter.isoScale
        role: "display"
    }
    RoleTexts {
        id: speeds
        model: Meter.speedScale
        role: "display"
    }

    function init() {
        Meter.mode = Exposure.AperturePriority;
        Meter.isoScale.currentIndex = 1;
        Meter.apertureScale.currentIndex = 2;
        Meter.compensationScale.currentIndex = 3;
        Harness.advance(300);
    }

    function test_scalesFollowTheProfile() {
        compare(apertures.joined(), "1.4 2 2.8 4 5.6 8 11 16 22");
        compare(isos.joined(), "50 100 200 400 800 1600");
        compare(speeds.joined(), "4s 2s 1s 2 4 8 15 30 60 125 250 500 1000");
        compare(Meter.compensationScale.count, 14);
        verify(Meter.apertureScale.selectable);
        verify(!Meter.manualScale.selectable);
    }

    function test_aperturePriorityComputesTheSpeed() {
        compare(Meter.speed.display, "125");
        Meter.apertureScale.currentIndex = 5;
        compare(Meter.aperture.display, "8");
        Harness.advance(300);
        compare(Meter.speed.display, "15");
        compare(Meter.speedScale.currentIndex, 6);
        compare(Meter.exposureError, Exposure.NoError);
    }

    function test_shutterPriorityComputesTheApertureAndIsStored() {
        Meter.mode = Exposure.ShutterPriority;
        Meter.speedScale.currentIndex = 11;
        compare(Meter.speed.display, "500");
        Harness.advance(300);
        compare(Meter.aperture.display, "1.4");
        compare(Meter.apertureScale.currentIndex, 0);
        compare(AppSettings.profileSettings("default").mode, Exposure.ShutterPriority);
    }

    function test_compensationAsksForMoreLight() {
        Meter.compensationScale.currentIndex = 4;
        compare(Meter.compensation.signedDisplay, "+1");
        Harness.advance(300);
        compare(Meter.speed.display, "60");
    }

    // Out of range the speed shows the fastest entry of the full-stop table, which the
    // profile's cut scale does not offer.
    function test_overexposureLeavesTheScale() {
        Meter.isoScale.currentIndex = 5;
        Meter.apertureScale.currentIndex = 0;
        Harness.advance(300);
        compare(Meter.exposureError, Exposure.Overexposed);
        compare(Meter.speed.display, "8000");
        compare(Meter.speedScale.currentIndex, -1);
    }

    function test_manualShowsTheDeviationOnItsScale() {
        Meter.mode = Exposure.Manual;
        Meter.speedScale.currentIndex = 9;
        Harness.advance(300);
        compare(Meter.manualExposure.display, "0");
        compare(Meter.manualScale.currentIndex, 3);
        Meter.speedScale.currentIndex = 8;
        compare(Meter.manualExposure.signedDisplay, "+1");
        compare(Meter.manualScale.currentIndex, 4);
        Meter.manualScale.currentIndex = 0;
        compare(Meter.manualScale.currentIndex, 4);
    }
}
