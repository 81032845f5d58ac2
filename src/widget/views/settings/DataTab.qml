pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// What leaves this device, and where its history comes together with that of others.
Item {
    id: root

    required property DataPage page

    /// A confirmation is asked for.
    readonly property bool asking: confirmation.visible

    SettingsPage {
        anchors.bottom: problem.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top

        Note {
            size: 12
            text: root.page.texts.label("syncAbout")
            width: parent.width
        }
        ThisDevice {
            enabled: !root.page.sync.busy
            page: root.page
            width: parent.width
        }
        LinkedGroup {
            enabled: !root.page.sync.busy
            page: root.page
            width: parent.width
        }
        ServerGroup {
            enabled: !root.page.sync.busy
            page: root.page
            width: parent.width

            onDeletionRequested: confirmation.open()
        }
    }
    ProblemBar {
        id: problem

        anchors.bottom: parent.bottom
        problem: root.page.sync.problemText
        width: root.width
    }
    Confirmation {
        id: confirmation

        cancelText: root.page.texts.label("syncCancel")
        confirmText: root.page.texts.label("syncDeleteConfirm")
        objectName: "confirmation"
        text: root.page.texts.label("syncDeleteMessage")
        title: root.page.texts.label("syncDeleteTitle")

        onConfirmed: root.page.sync.deleteHistory()
    }
}
