pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// One session: title and cost, below them project, time and device, and the tokens.
Item {
    id: root

    required property string title
    required property string detail
    required property string cost
    required property string tokens
    required property string spoken

    implicitHeight: Metrics.sessionRow

    Accessible.name: root.spoken
    Accessible.role: Accessible.ListItem

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -6
        anchors.rightMargin: -6
        color: Colors.track
        opacity: hover.hovered || root.ListView.isCurrentItem && root.ListView.view.activeFocus ? 0.6 : 0
        radius: 9

        Behavior on opacity {
            NumberAnimation {
                duration: Motion.hover
                easing.type: Easing.OutCubic
            }
        }
    }
    HoverHandler {
        id: hover
    }
    Item {
        anchors.left: parent.left
        anchors.right: parent.right
        height: Math.max(Metrics.sessionText, money.implicitHeight + spent.implicitHeight)
        // Larger texts take from the room above and below them alike.
        y: Math.min(Metrics.sessionPad, (root.height - height) / 2)

        Caption {
            anchors.left: parent.left
            anchors.right: money.left
            anchors.rightMargin: 8
            anchors.top: parent.top
            size: 13
            text: root.title
        }
        Caption {
            id: money

            anchors.right: parent.right
            anchors.top: parent.top
            size: 13
            font.weight: Font.DemiBold
            text: root.cost
        }
        Caption {
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.right: spent.left
            anchors.rightMargin: 8
            color: Colors.tertiary
            size: 11
            text: root.detail
        }
        Caption {
            id: spent

            anchors.bottom: parent.bottom
            anchors.right: parent.right
            color: Colors.tertiary
            size: 11
            text: root.tokens
        }
    }
}
