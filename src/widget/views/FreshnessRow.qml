pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// How old the shown limits are: a dot that is lit while they are fresh, and the age in words.
Item {
    id: root

    required property freshness readings

    implicitHeight: age.implicitHeight

    Accessible.description: root.readings.tip
    Accessible.name: root.readings.text
    Accessible.role: Accessible.StaticText

    Rectangle {
        id: dot

        anchors.verticalCenter: parent.verticalCenter
        color: root.readings.fresh ? Colors.green : Colors.tertiary
        height: width
        radius: width / 2
        width: 6

        Behavior on color {
            ColorAnimation {
                duration: Motion.fill
            }
        }
    }
    Caption {
        id: age

        color: Colors.tertiary
        size: 11
        text: root.readings.text
        width: Math.min(implicitWidth, root.width - x)
        x: 12
    }
    Item {
        height: parent.height
        width: age.x + age.width

        HoverHandler {
            id: hover
        }
        Tip {
            text: root.readings.tip
            wanted: hover.hovered && root.readings.tip !== ""
        }
    }
}
