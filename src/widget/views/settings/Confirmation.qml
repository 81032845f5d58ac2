pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Kestrelbay

/// Asks before something is done that cannot be undone; it is left undone unless that very button is pressed.
Popup {
    id: root

    required property string title
    required property string text
    required property string cancelText
    required property string confirmText

    /// What had the keyboard, and gets it back.
    property Item before: null

    signal confirmed

    anchors.centerIn: T.Overlay.overlay
    closePolicy: Popup.CloseOnEscape
    focus: true
    modal: true
    padding: 18
    width: Math.min(300, (parent?.width ?? 340) - 40)

    onAboutToShow: {
        root.before = root.parent.Window.activeFocusItem;
        cancel.focus = true;
    }
    onClosed: root.before?.forceActiveFocus(Qt.PopupFocusReason)

    Column {
        spacing: 8
        width: parent.width

        Accessible.description: root.text
        Accessible.name: root.title
        Accessible.role: Accessible.Dialog

        Note {
            color: Colors.primary
            font.weight: Font.DemiBold
            size: 13
            text: root.title
            width: parent.width
        }
        Note {
            bottomPadding: 8
            size: 12
            text: root.text
            width: parent.width
        }
        Row {
            anchors.right: parent.right
            spacing: 10

            PushButton {
                id: cancel

                text: root.cancelText

                Accessible.defaultButton: true
                onClicked: root.close()
            }
            PushButton {
                text: root.confirmText
                tone: Colors.red

                onClicked: {
                    root.close();
                    root.confirmed();
                }
            }
        }
    }

    background: Rectangle {
        border.color: Colors.track
        border.width: 1
        color: Qt.alpha(Qt.lighter(Colors.surface, 1.6), 1)
        radius: 14
    }
    enter: Transition {
        NumberAnimation {
            duration: Motion.tip
            from: 0
            property: "opacity"
            to: 1
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: Motion.tip
            property: "opacity"
            to: 0
        }
    }
    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.5)
    }
}
