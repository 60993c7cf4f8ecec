<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name></name>
    <message id="profile.default">
        <source>Default</source>
        <translation>Default</translation>
    </message>
    <message id="profile.untitled">
        <source>Untitled</source>
        <translation>Untitled</translation>
    </message>
</context>
</TS>
