<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name></name>
    <message id="profile.default">
        <source>Default</source>
        <translation>Default</translation>
    </message>
    <message id="mode">
        <source>Mode</source>
        <translation>Mode</translation>
    </message>
    <message id="accessibility.mode.av">
        <source>Aperture priority</source>
        <translation>Aperture priority</translation>
    </message>
    <message id="accessibility.mode.tv">
        <source>Shutter priority</source>
        <translation>Shutter priority</translation>
    </message>
    <message id="accessibility.mode.m">
        <source>Manual</source>
        <translation>Manual</translation>
    </message>
    <message id="accessibility.hold">
        <source>Hold</source>
        <translation>Hold</translation>
    </message>
    <message id="accessibility.profilePicker">
        <source>Profile</source>
        <translation>Profile</translation>
    </message>
    <message id="settings">
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message id="accessibility.aperture">
        <source>Aperture</source>
        <translation>Aperture</translation>
    </message>
    <message id="accessibility.shutterSpeed">
        <source>Shutter speed</source>
        <translation>Shutter speed</translation>
    </message>
    <message id="accessibility.iso">
        <source>ISO</source>
        <translation>ISO</translation>
    </message>
    <message id="accessibility.manual">
        <source>Exposure deviation</source>
        <translation>Exposure deviation</translation>
    </message>
    <message id="accessibility.underexposed">
        <source>Underexposed</source>
        <translation>Underexposed</translation>
    </message>
    <message id="accessibility.overexposed">
        <source>Overexposed</source>
        <translation>Overexposed</translation>
    </message>
    <message id="accessibility.compensation">
        <source>Exposure compensation</source>
        <translation>Exposure compensation</translation>
    </message>
    <message id="button.save">
        <source>Log</source>
        <translation>Log</translation>
    </message>
    <message id="accessibility.photoalbum">
        <source>Logged photos</source>
        <translation>Logged photos</translation>
    </message>
    <message id="Done">
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message id="profiles.title">
        <source>Profiles</source>
        <translation>Profiles</translation>
    </message>
    <message id="profiles.explanation">
        <source>Each profile keeps the steps and limits of one of your cameras. The first profile is always there and stays first.</source>
        <translation>Each profile keeps the steps and limits of one of your cameras. The first profile is always there and stays first.</translation>
    </message>
    <message id="profiles.button.addProfile">
        <source>Add profile</source>
        <translation>Add profile</translation>
    </message>
    <message id="profile.name">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="settings.iso.compensation">
        <source>ISO</source>
        <translation>ISO</translation>
    </message>
    <message id="settings.aperture">
        <source>Aperture</source>
        <translation>Aperture</translation>
    </message>
    <message id="settings.shutterSpeed">
        <source>Shutter speed</source>
        <translation>Shutter speed</translation>
    </message>
    <message id="stops.full">
        <source>Full</source>
        <translation>Full</translation>
    </message>
    <message id="stops.half">
        <source>Half</source>
        <translation>Half</translation>
    </message>
    <message id="stops.third">
        <source>Third</source>
        <translation>Third</translation>
    </message>
    <message id="settings.minimum">
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message id="settings.maximum">
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
    <message id="settings.version">
        <source>Kestrum %1 (%2)</source>
        <translation>Kestrum %1 (%2)</translation>
    </message>
    <message id="OK">
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message id="photoalbum.title">
        <source>Logged photos</source>
        <translation>Logged photos</translation>
    </message>
    <message id="accessibility.photoalbum.displayMode">
        <source>Display mode</source>
        <translation>Display mode</translation>
    </message>
    <message id="accessibility.photoalbum.grid">
        <source>Grid</source>
        <translation>Grid</translation>
    </message>
    <message id="accessibility.photoalbum.list">
        <source>List</source>
        <translation>List</translation>
    </message>
    <message id="accessibility.photoalbum.map">
        <source>Map</source>
        <translation>Map</translation>
    </message>
    <message id="accessibility.photoalbum.photo">
        <source>Photo</source>
        <translation>Photo</translation>
    </message>
    <message id="photoalbum.map.empty">
        <source>No logged photo has a position</source>
        <translation>No logged photo has a position</translation>
    </message>
    <message id="photoalbum.empty">
        <source>No logged photos yet. Press Log to keep a reading with its picture.</source>
        <translation>No logged photos yet. Press Log to keep a reading with its picture.</translation>
    </message>
    <message id="photoalbum.detail.settings">
        <source>Exposure</source>
        <translation>Exposure</translation>
    </message>
    <message id="photoalbum.detail.location">
        <source>Location</source>
        <translation>Location</translation>
    </message>
    <message id="profile.untitled">
        <source>Untitled</source>
        <translation>Untitled</translation>
    </message>
    <message id="permission.camera.text">
        <source>Kestrum meters the light through the camera. Allow access to the camera to take a reading.</source>
        <translation>Kestrum meters the light through the camera. Allow access to the camera to take a reading.</translation>
    </message>
    <message id="permission.camera.settings.text">
        <source>Camera access is turned off for Kestrum. Turn it on in the system settings.</source>
        <translation>Camera access is turned off for Kestrum. Turn it on in the system settings.</translation>
    </message>
    <message id="permission.camera.settings.button">
        <source>Open Settings</source>
        <translation>Open Settings</translation>
    </message>
    <message id="permission.camera.button">
        <source>Allow Camera Access</source>
        <translation>Allow Camera Access</translation>
    </message>
    <message id="accessibility.zoom">
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message id="accessibility.mockCamera">
        <source>Simulated camera picture</source>
        <translation>Simulated camera picture</translation>
    </message>
    <message id="settings.calibration.title">
        <source>Camera</source>
        <translation>Camera</translation>
    </message>
    <message id="settings.calibration">
        <source>Calibration</source>
        <translation>Calibration</translation>
    </message>
    <message id="settings.calibration.explanation">
        <source>Calibration shifts every reading of this camera, in thirds of a stop, so that it agrees with your handheld meter.</source>
        <translation>Calibration shifts every reading of this camera, in thirds of a stop, so that it agrees with your handheld meter.</translation>
    </message>
    <message id="settings.lensAperture">
        <source>Lens aperture</source>
        <translation>Lens aperture</translation>
    </message>
    <message id="settings.lensAperture.explanation">
        <source>This camera does not report its f-number; enter the lens aperture so that readings are right.</source>
        <translation>This camera does not report its f-number; enter the lens aperture so that readings are right.</translation>
    </message>
    <message id="settings.icon">
        <source>App icon</source>
        <translation>App icon</translation>
    </message>
    <message id="settings.icon.light">
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message id="settings.icon.dark">
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message id="settings.icon.yellow">
        <source>Yellow</source>
        <translation>Yellow</translation>
    </message>
    <message id="settings.icon.classic">
        <source>Classic</source>
        <translation>Classic</translation>
    </message>
    <message id="settings.button.feedback">
        <source>Send feedback</source>
        <translation>Send feedback</translation>
    </message>
</context>
</TS>
