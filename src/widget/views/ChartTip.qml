pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// What is to be said of the hovered bar, beside it: on its left where there is no room on its right.
Pop {
    id: root

    required property chartTipText tip
    required property real leftmost
    required property real rightmost

    readonly property bool mirrored: root.tip.x + root.width > root.rightmost

    duration: Motion.reduced ? Motion.transition : Motion.tip
    height: surface.height
    objectName: "tip"
    width: surface.width + root.tip.clearance
    x: Math.max(root.mirrored ? root.tip.x - root.width : root.tip.x, root.leftmost)
    y: root.tip.y

    Behavior on x {
        enabled: root.reveal > 0

        NumberAnimation {
            duration: Motion.tip
            easing.type: Easing.OutCubic
        }
    }
    Behavior on y {
        enabled: root.reveal > 0

        NumberAnimation {
            duration: Motion.tip
            easing.type: Easing.OutCubic
        }
    }

    Rectangle {
        id: surface

        border.color: Colors.track
        border.width: 1
        color: Qt.alpha(Qt.lighter(Colors.surface, 1.6), 1)
        height: texts.height + 12
        radius: 8
        width: texts.width + 20
        x: root.mirrored ? 0 : root.tip.clearance

        Column {
            id: texts

            x: 10
            y: 6

            Caption {
                color: Colors.secondary
                size: 11
                text: root.tip.title
            }
            Caption {
                font.weight: Font.DemiBold
                size: 13
                text: root.tip.cost
            }
            Caption {
                color: Colors.tertiary
                size: 11
                text: root.tip.tokens
            }
        }
    }
}
