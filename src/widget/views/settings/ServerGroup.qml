pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// Whether and when data go to the server, and what takes them away from there.
SettingsGroup {
    id: root

    required property DataPage page

    signal deletionRequested

    note: root.page.texts.label("syncDeleteAbout")
    title: root.page.texts.label("syncServer")

    ToggleRow {
        divided: false
        note: root.page.syncNote
        on: !root.page.syncing
        text: root.page.texts.label("syncOff")

        onClicked: root.page.sync.setSyncing(!root.page.syncing)
    }
    Item {
        implicitHeight: line.implicitHeight + 16
        width: parent.width

        Divider {
            width: parent.width - 28
            x: 14
        }
        RowLayout {
            id: line

            anchors.verticalCenter: parent.verticalCenter
            spacing: 8
            width: parent.width - 28
            x: 14

            PushButton {
                text: root.page.texts.label("syncNow")

                onClicked: root.page.sync.syncNow()
            }
            Item {
                Layout.fillWidth: true
            }
            PushButton {
                about: root.note
                text: root.page.texts.label("syncDelete")
                tone: Colors.red

                onClicked: root.deletionRequested()
            }
        }
    }
}
