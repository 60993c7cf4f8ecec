import QtQuick
import QtQuick.Controls
import Kestrum

// Chooses the profile the meter works with; the built-in one is called "Default".
ComboBox {
    id: picker
    objectName: "profilePicker"

    function titleOf(id: string, name: string): string {
        return id === "default" ? qsTrId("profile.default") : name;
    }

    model: AppSettings.profiles
    textRole: "name"
    valueRole: "profileId"
    currentIndex: indexOfValue(AppSettings.currentProfileID)
    displayText: titleOf(AppSettings.currentProfileID, currentText)
    flat: true
    font.pixelSize: Theme.bodySize
    Accessible.name: qsTrId("accessibility.profilePicker")
    Accessible.description: displayText

    // The delegate reaches the control by its id, a scope that qmllint of Qt 6.4 does
    // not follow into delegates.
    // qmllint disable unqualified
    delegate: MenuItem {
        id: item
        required property int index
        required property string profileId
        required property string name
        required property bool isCurrent

        width: ListView.view.width
        text: picker.titleOf(profileId, name)
        checkable: true
        checked: isCurrent
        highlighted: picker.highlightedIndex === index
        Accessible.name: text
    }

    // qmllint enable unqualified
    onActivated: index => AppSettings.currentProfileID = valueAt(index)
}
