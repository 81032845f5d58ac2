pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// What other devices know this one by.
SettingsGroup {
    id: root

    required property DataPage page

    note: root.page.texts.label("syncPasswordAbout")
    title: root.page.texts.label("syncThisDevice")

    IdRow {
        divided: false
        page: root.page
    }
    SettingsRow {
        divided: false
        label: root.page.texts.label("syncName")

        EntryField {
            id: name

            label: root.page.texts.label("syncName")
            text: root.page.sync.name

            Layout.fillWidth: true
            Layout.maximumWidth: 170 * Metrics.textScale
            Layout.minimumWidth: 90
            onAccepted: root.page.sync.rename()
            onTextEdited: root.page.sync.name = text
        }
        PushButton {
            about: name.label
            text: root.page.texts.label("syncSave")

            onClicked: root.page.sync.rename()
        }
    }
    PasswordRows {
        page: root.page
    }
}
