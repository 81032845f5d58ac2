pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The picture of a switch.
Rectangle {
    id: root

    required property bool on
    required property bool ringed

    color: root.on ? Colors.green : Colors.chosen
    implicitHeight: 20
    implicitWidth: 34
    radius: 10

    Behavior on color {
        ColorAnimation {
            duration: Motion.tab
        }
    }

    Rectangle {
        color: Colors.primary
        height: 16
        radius: 8
        width: 16
        x: root.on ? 16 : 2
        y: 2

        Behavior on x {
            NumberAnimation {
                duration: Motion.tab
                easing.type: Easing.OutCubic
            }
        }
    }
    FocusRing {
        active: root.ringed
        anchors.fill: parent
        anchors.margins: -4
        radius: 14
    }
}
