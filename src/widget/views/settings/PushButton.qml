pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// A button with a text.
Pressable {
    id: root

    property color tone: Colors.primary

    implicitHeight: Math.max(28, root.implicitContentHeight + 10)
    leftPadding: 12
    rightPadding: 12

    background: Rectangle {
        color: Colors.chosen
        opacity: root.down ? 0.6 : root.hovered ? 1 : 0.8
        radius: 7

        FocusRing {
            active: root.activeFocus
            anchors.fill: parent
            anchors.margins: -3
            radius: 10
        }
    }
    contentItem: Caption {
        color: root.tone
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        text: root.text
        verticalAlignment: Text.AlignVCenter

        transform: PressStyle {
            held: root.down
            label: root.contentItem
        }
    }
}
