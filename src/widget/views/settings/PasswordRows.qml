pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// Whether others can link to this device, and the field for a password with which they can.
FocusScope {
    id: root

    required property DataPage page

    property bool changing: false
    /// A password was told to be set, and not changed since.
    property bool asked: false

    readonly property SyncSettings sync: root.page.sync
    readonly property string fieldLabel:
        root.page.texts.label(root.page.hasPassword ? "syncNewPassword" : "syncPassword")
    readonly property bool entering: root.changing || !root.page.hasPassword

    function use() {
        // An empty one would remove the password, for which there is a button.
        root.asked = root.sync.password;
        if (root.asked)
            root.sync.setPassword();
        else
            field.forceActiveFocus(Qt.OtherFocusReason);
    }
    function change() {
        root.changing = true;
        // Whatever had the keyboard would show the password as it is typed.
        field.forceActiveFocus(Qt.OtherFocusReason);
    }
    function remove() {
        // The field appears for the next password, which must not go where the keyboard was.
        removal.forceActiveFocus(Qt.OtherFocusReason);
        root.sync.removePassword();
    }
    function leave() {
        root.changing = false;
        root.sync.password = "";
    }

    implicitHeight: rows.implicitHeight
    width: parent.width // a group's column

    // Whichever row is left has the keyboard if the one that went had it.
    onEnteringChanged: (root.entering ? field : change).focus = true

    Connections {
        function onPasswordChanged() {
            if (root.asked && !root.sync.password)
                root.changing = false; // it has been set
        }

        target: root.sync
    }
    Column {
        id: rows

        width: parent.width

        SettingsRow {
            divided: false
            label: root.page.texts.label("syncPassword")
            visible: root.page.hasPassword

            SpokenCaption {
                color: Colors.secondary
                text: root.page.texts.label("syncPasswordSet")
            }
            PushButton {
                id: change

                about: root.page.texts.label("syncPassword")
                text: root.page.texts.label(root.changing ? "syncCancel" : "syncChange")

                onClicked: root.changing ? root.leave() : root.change()
            }
            PushButton {
                id: removal

                about: root.page.texts.label("syncPassword")
                text: root.page.texts.label("syncRemove")

                onClicked: root.remove()
            }
        }
        SettingsRow {
            divided: false
            label: root.fieldLabel
            visible: root.entering

            EntryField {
                id: field

                label: root.fieldLabel
                placeholderText: root.page.texts.label("syncPasswordPrompt")
                secret: true
                text: root.sync.password

                Keys.onEscapePressed: root.leave()
                Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape && root.changing
                Layout.fillWidth: true
                Layout.maximumWidth: 170 * Metrics.textScale
                Layout.minimumWidth: 90
                onAccepted: root.use()
                onTextEdited: {
                    root.asked = false;
                    root.sync.password = text;
                }
            }
            PushButton {
                about: field.label
                text: root.page.texts.label("syncSet")

                onClicked: root.use()
            }
        }
    }
}
