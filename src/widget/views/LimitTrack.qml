pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// How much of a window is used, with a mark at how much of its time has gone by.
Rectangle {
    id: root

    required property limitRow row
    required property string paceTip

    property real fill: root.row.fill

    color: Colors.track
    implicitHeight: 6
    radius: height / 2

    Behavior on fill {
        NumberAnimation {
            duration: Motion.fill
            easing.type: Easing.OutCubic
        }
    }
    Rectangle {
        color: root.row.fillColor
        height: parent.height
        radius: height / 2
        visible: root.fill > 0
        width: Math.max(height, root.fill * parent.width)

        Behavior on color {
            ColorAnimation {
                duration: Motion.fill
            }
        }
    }
    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        color: Colors.primary
        height: 10
        visible: root.row.hasPace
        width: 2
        x: Math.round(Math.min(Math.max(root.row.pace * parent.width - width / 2, 0), parent.width - width))
    }
    HoverHandler {
        id: hover

        margin: 4
    }
    Tip {
        text: root.paceTip
        wanted: hover.hovered && root.row.hasPace
    }
}
