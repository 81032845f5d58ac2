pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// A row with a switch. It shows what holds: a click only asks for the other.
Pressable {
    id: root

    required property bool on
    property string note
    /// Parted from the row above by a line.
    property bool divided: true

    about: root.note
    bottomPadding: 7
    implicitHeight: Math.max(38, root.implicitContentHeight + 14)
    kind: Accessible.CheckBox
    leftPadding: 14
    rightPadding: 14
    topPadding: 7
    width: parent.width // a group's column

    Accessible.checkable: true
    Accessible.checked: root.on
    Accessible.onToggleAction: root.clicked()

    background: Item {
        Divider {
            visible: root.divided
            width: root.width - 28
            x: 14
        }
    }
    contentItem: RowLayout {
        spacing: 12

        Column {
            spacing: 2

            Layout.fillWidth: true

            Caption {
                elide: Text.ElideNone
                maximumLineCount: 10
                size: 13
                text: root.text
                width: parent.width
                wrapMode: Text.Wrap
            }
            Note {
                text: root.note
                visible: root.note
                width: parent.width

                Accessible.ignored: true
            }
        }
        Toggle {
            on: root.on
            ringed: root.activeFocus
        }
    }
}
