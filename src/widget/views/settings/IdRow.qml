pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// This device's ID, to be copied.
SettingsRow {
    id: root

    required property DataPage page

    label: root.page.texts.label("syncDeviceId")

    SpokenCaption {
        color: Colors.secondary
        elide: Text.ElideNone
        font.family: Qt.platform.os === "osx" ? "Menlo" : "monospace"
        text: root.page.deviceId
        visible: root.page.deviceId

        Layout.minimumWidth: implicitWidth
    }
    PushButton {
        about: root.label
        enabled: root.page.deviceId
        text: root.page.texts.label(copied.running ? "syncCopied" : "syncCopy")

        onClicked: {
            root.page.copyDeviceId();
            copied.restart();
        }
    }
    Timer {
        id: copied

        interval: 1500
    }
}
