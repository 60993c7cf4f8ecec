import QtQuick
import QtTest
import Kestrum

// The profile list and a profile's settings, as the profile screens and the picker use them.
TestCase {
    id: test
    name: "Profiles"

    RoleTexts {
        id: names
        model: AppSettings.profiles
        role: "name"
    }
    RoleTexts {
        id: ids
        model: AppSettings.profiles
        role: "profileId"
    }
    RoleTexts {
        id: current
        model: AppSettings.profiles
        role: "isCurrent"
    }
    RoleTexts {
        id: meterISOs
        model: Meter.isoScale
        role: "display"
    }

    function idAt(row) {
        return ids.joined().split(" ")[row];
    }

    function test_addRenameMoveDelete() {
        const profiles = AppSettings.profiles;
        compare(names.joined(), "Default");
        profiles.add();
        profiles.add();
        compare(names.joined(), "Default Untitled Untitled");
        verify(profiles.rename(1, "Hasselblad"));
        verify(profiles.rename(2, "Leica"));
        verify(!profiles.rename(3, "Nothing there"));
        profiles.move(2, 1);
        tryVerify(() => names.joined() === "Default Leica Hasselblad", 5000, "moved later");
        profiles.remove(1);
        tryVerify(() => names.joined() === "Default Hasselblad");

        // The first profile stays first, whatever is asked.
        profiles.move(1, 0);
        profiles.remove(0);
        compare(names.joined(), "Default Hasselblad");
    }

    function test_currentProfile() {
        const profiles = AppSettings.profiles;
        profiles.add();
        const added = idAt(profiles.count - 1);
        profiles.currentIndex = profiles.count - 1;
        compare(AppSettings.currentProfileID, added);
        compare(current.joined().split(" ")[profiles.count - 1], "true");
        AppSettings.currentProfileID = "not listed";
        compare(AppSettings.currentProfileID, added);
        profiles.currentIndex = 0;
        compare(AppSettings.currentProfileID, "default");
        compare(profiles.currentIndex, 0);
    }

    // The editor writes the current profile through the settings the meter follows.
    function test_stepsAndLimitsOfTheCurrentProfile() {
        const profile = AppSettings.profileSettings(AppSettings.currentProfileID);
        compare(profile.minimumISO.display, "50");
        profile.fractionForISO = Exposure.Third;
        compare(profile.fractionForISO, Exposure.Third);
        const minimums = profile.minimumISOChoices;
        compare(minimums.count, 10);
        compare(minimums.currentIndex, 6);
        minimums.currentIndex = 7;
        compare(profile.minimumISO.display, "64");
        compare(profile.maximumISOChoices.currentIndex, 6);
        tryVerify(() => meterISOs.joined().startsWith("64 80 100 125"));
    }

    // Another profile's settings live beside the current one's, under their own keys.
    function test_anotherProfilesSettings() {
        AppSettings.profiles.add();
        const other = AppSettings.profileSettings(idAt(AppSettings.profiles.count - 1));
        other.mode = Exposure.Manual;
        other.minimumApertureChoices.currentIndex = 5;
        compare(other.minimumAperture.display, "4");
        compare(other.fNumber, 4, "the aperture moves inside the new limits");
        other.exposureTimeS = 0.5;
        const again = AppSettings.profileSettings(other.profileId);
        compare(again.exposureTimeS, 0.5);
        compare(again.mode, Exposure.Manual);
        compare(AppSettings.profileSettings("default").mode, Exposure.AperturePriority);
        compare(Meter.mode, Exposure.AperturePriority);
    }
}
