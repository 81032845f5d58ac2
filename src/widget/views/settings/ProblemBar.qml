pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Why the last command failed. It is below what scrolls, so that it is always in sight.
Item {
    id: root

    required property string problem

    implicitHeight: root.visible ? note.implicitHeight + 20 : 0
    visible: root.problem

    Accessible.name: root.problem
    Accessible.role: Accessible.AlertMessage

    Rectangle {
        anchors.fill: parent
        color: Colors.orange
        opacity: 0.12
    }
    Note {
        id: note

        anchors.verticalCenter: parent.verticalCenter
        color: Colors.orange
        elide: Text.ElideRight
        maximumLineCount: 4 // a code may be of any length
        size: 12
        text: root.problem
        width: root.width - 48
        x: 24

        Accessible.ignored: true
    }
}
