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

    component SectionHeader: Label {
        Layout.topMargin: Theme.margin
        color: Theme.secondary
        font.pixelSize: Theme.captionSize
        font.capitalization: Font.AllUppercase
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

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
                Accessible.onPressAction: clicked()
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

            SectionHeader {
                text: qsTrId("settings.icon")
            }
            // qmllint disable unqualified
            Repeater {
                model: AppSettings.appIcons

                delegate: ItemDelegate {
                    id: iconRow
                    required property int index
                    required property string name
                    required property string previewSource
                    required property bool isCurrent

                    Layout.fillWidth: true
                    text: name
                    checkable: true
                    checked: isCurrent
                    leftPadding: 72
                    font.pixelSize: Theme.bodySize
                    Accessible.role: Accessible.RadioButton
                    Accessible.name: name
                    Accessible.onPressAction: clicked()
                    onClicked: AppSettings.appIcons.currentIndex = index

                    Image {
                        id: preview
                        anchors.left: parent.left
                        anchors.leftMargin: Theme.spacing
                        anchors.verticalCenter: parent.verticalCenter
                        width: 48
                        height: 48
                        source: iconRow.previewSource
                        sourceSize.width: 96
                        sourceSize.height: 96
                    }
                    // Rounds the preview's corners (radius 11) by covering them with the
                    // sheet's own colour.
                    Rectangle {
                        anchors.fill: preview
                        anchors.margins: -2
                        radius: 13
                        color: Theme.clear
                        border.width: 4
                        border.color: Theme.panel
                    }
                    Label {
                        visible: iconRow.isCurrent
                        anchors.right: parent.right
                        anchors.rightMargin: Theme.margin
                        anchors.verticalCenter: parent.verticalCenter
                        text: "\u2713"
                        color: Theme.appYellow
                        font.pixelSize: Theme.valueSize
                        Accessible.ignored: true
                    }
                }
            }

            // qmllint enable unqualified
            CameraCalibrationSection {
                visible: CameraCalibration.available
                Layout.fillWidth: true
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
