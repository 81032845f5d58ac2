pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// A tick box with a title and a line below it. It shows what holds: a click only asks for the other.
Pressable {
    id: root

    required property bool ticked

    bottomPadding: 6
    kind: Accessible.CheckBox
    leftPadding: 14
    rightPadding: 8
    topPadding: 6

    Accessible.checkable: true
    Accessible.checked: root.ticked
    Accessible.onToggleAction: root.clicked()

    contentItem: RowLayout {
        spacing: 10

        Rectangle {
            border.color: root.ticked ? Colors.accent : Colors.tertiary
            border.width: 1
            color: root.ticked ? Colors.accent : "transparent"
            implicitHeight: 16
            implicitWidth: 16
            radius: 4

            TintedIcon {
                anchors.centerIn: parent
                color: Colors.primary
                name: "check"
                size: 11
                visible: root.ticked
            }
            FocusRing {
                active: root.activeFocus
                anchors.fill: parent
                anchors.margins: -4
                radius: 8
            }
        }
        Column {
            spacing: 2

            Layout.fillWidth: true

            Caption {
                size: 13
                text: root.text
                width: parent.width
            }
            Caption {
                color: Colors.secondary
                size: 11
                text: root.about
                visible: root.about
                width: parent.width
            }
        }
    }
}
