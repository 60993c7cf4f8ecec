import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kestrum

// The settings: the profiles, the app icon, the camera's calibration, feedback and the
// version line, which opens the web site.
Page {
    id: page

    // The address the version line opens.
    readonly property url website: "https://kestrum.org"

    signal profilesChosen

    title: qsTrId("settings")
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

            ItemDelegate {
                objectName: "profilesRow"
                Layout.fillWidth: true
                text: qsTrId("profiles.title")
                font.pixelSize: Theme.bodySize
                Accessible.name: text
                onClicked: page.profilesChosen()

                Label {
                    anchors.right: parent.right
                    anchors.rightMargin: Theme.spacing
                    anchors.verticalCenter: parent.verticalCenter
                    text: "\u203a"
                    font.pixelSize: Theme.valueSize
                    color: Theme.secondary
                    Accessible.ignored: true
                }
            }

            Button {
                objectName: "feedback"
                visible: AppSettings.canSendEmail
                Layout.fillWidth: true
                text: qsTrId("settings.button.feedback")
                flat: true
                font.capitalization: Font.MixedCase
                Accessible.name: text
                onClicked: AppSettings.sendFeedback()
            }

            Button {
                objectName: "versionLine"
                Layout.fillWidth: true
                text: qsTrId("settings.version").arg(AppSettings.appVersion).arg(AppSettings.buildNumber)
                flat: true
                font.capitalization: Font.MixedCase
                Accessible.name: text
                onClicked: Desktop.openUrl(page.website)
            }
        }
    }
}
