import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// The editor of one profile: its name (the built-in "Default" keeps its own), and the step
// and limits of ISO, aperture and shutter speed. Every change is stored at once.
Page {
    id: page

    required property string profileId
    required property int row
    required property string name

    readonly property ProfileSettings profile: AppSettings.profileSettings(profileId)
    readonly property bool nameEditable: profileId !== "default"

    title: nameEditable ? nameField.text : qsTrId("profile.default")
    background: null

    Flickable {
        anchors.fill: parent
        contentHeight: form.implicitHeight + 2 * Theme.margin
        clip: true

        ColumnLayout {
            id: form
            x: Theme.margin
            y: Theme.margin
            width: parent.width - 2 * Theme.margin
            spacing: Theme.spacing

            Label {
                visible: page.nameEditable
                text: qsTrId("profile.name")
                color: Theme.secondary
                font.pixelSize: Theme.captionSize
                font.capitalization: Font.AllUppercase
            }
            TextField {
                id: nameField
                objectName: "nameField"
                visible: page.nameEditable
                Layout.fillWidth: true
                text: page.name
                Accessible.name: qsTrId("profile.name")
                onTextEdited: AppSettings.profiles.rename(page.row, text)
            }

            ScaleLimitsSection {
                Layout.fillWidth: true
                title: qsTrId("settings.iso.compensation")
                step: page.profile.fractionForISO
                minimumChoices: page.profile.minimumISOChoices
                maximumChoices: page.profile.maximumISOChoices
                onStepChosen: step => page.profile.fractionForISO = step
            }
            ScaleLimitsSection {
                Layout.fillWidth: true
                title: qsTrId("settings.aperture")
                step: page.profile.fractionForAperture
                minimumChoices: page.profile.minimumApertureChoices
                maximumChoices: page.profile.maximumApertureChoices
                onStepChosen: step => page.profile.fractionForAperture = step
            }
            ScaleLimitsSection {
                Layout.fillWidth: true
                title: qsTrId("settings.shutterSpeed")
                step: page.profile.fractionForSpeed
                minimumChoices: page.profile.minimumSpeedChoices
                maximumChoices: page.profile.maximumSpeedChoices
                onStepChosen: step => page.profile.fractionForSpeed = step
            }
        }
    }
}
