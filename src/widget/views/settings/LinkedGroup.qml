pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// The devices that share their history with this one, and the fields that link another.
SettingsGroup {
    id: root

    required property DataPage page

    note: root.page.texts.label("syncLinkedAbout")
    title: root.page.texts.label("syncLinked")

    DeviceList {
        id: list

        page: root.page
        width: parent.width

        onEmptied: id.focus = true
    }
    SettingsRow {
        divided: list.interactive
        label: ""

        EntryField {
            id: id

            about: root.title
            label: root.page.texts.label("syncDeviceId")
            placeholderText: "ABCD-EFGH-JKMN"
            text: root.page.sync.linkId

            Layout.fillWidth: true
            Layout.minimumWidth: 128 * Metrics.textScale
            Layout.preferredWidth: 150
            onAccepted: root.page.sync.link()
            onTextEdited: root.page.sync.linkId = text
        }
        EntryField {
            about: root.title
            label: root.page.texts.label("syncPassword")
            placeholderText: root.page.texts.label("syncPassword")
            secret: true
            text: root.page.sync.linkPassword

            Layout.fillWidth: true
            Layout.minimumWidth: 50
            Layout.preferredWidth: 110
            onAccepted: root.page.sync.link()
            onTextEdited: root.page.sync.linkPassword = text
        }
        PushButton {
            about: root.title
            text: root.page.texts.label("syncLink")

            onClicked: root.page.sync.link()
        }
    }
}
