pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Kestrelbay

/// One choice of many, in a list that drops down. It shows what holds: a choice is only asked for.
Pressable {
    id: root

    required property string label
    required property list<string> choices
    required property int current

    readonly property bool opened: popup.visible

    signal chosen(int index)

    implicitHeight: Math.max(28, root.implicitContentHeight + 10)
    kind: Accessible.ComboBox
    leftPadding: 8
    rightPadding: 8
    text: root.choices[root.current] ?? ""

    Accessible.name: root.label
    Accessible.description: root.text
    Keys.onDownPressed: popup.open()
    Keys.onUpPressed: popup.open()
    onClicked: root.opened ? popup.close() : popup.open()

    Popup {
        id: popup

        closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutsideParent
        focus: true
        margins: 8
        objectName: "choices"
        padding: 4
        width: root.width
        y: root.height + 4

        onClosed: root.forceActiveFocus(Qt.PopupFocusReason)

        background: Rectangle {
            border.color: Colors.track
            border.width: 1
            color: Qt.alpha(Qt.lighter(Colors.surface, 1.8), 1)
            radius: 9
        }
        contentItem: ChoiceMenu {
            choices: root.choices
            current: root.current
            label: root.label

            onChosen: index => {
                popup.close();
                root.chosen(index);
            }
        }
    }

    background: Rectangle {
        border.color: Colors.track
        border.width: 1
        color: Qt.alpha(Colors.track, root.hovered ? 0.1 : 0.07)
        radius: 7

        FocusRing {
            active: root.activeFocus
            anchors.fill: parent
            radius: 7
        }
    }
    contentItem: RowLayout {
        spacing: 4

        Caption {
            text: root.text
            Layout.fillWidth: true
        }
        TintedIcon {
            name: "chevron-down"
        }
    }
}
