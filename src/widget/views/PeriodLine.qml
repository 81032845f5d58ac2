pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// What the current period cost, and beside it what else is known of it and of the one before.
Item {
    id: root

    required property periodInfo period

    implicitHeight: Math.max(money.implicitHeight, notes.implicitHeight)

    Roll {
        id: money

        anchors.verticalCenter: parent.verticalCenter
        font.weight: Font.DemiBold
        size: 24
        text: root.period.cost
        value: root.period.amount
        width: Math.min(implicitWidth, root.width / 2)

        Accessible.name: money.text
        Accessible.role: Accessible.StaticText
    }
    Column {
        id: notes

        anchors.left: money.right
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        SpokenCaption {
            color: Colors.secondary
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 9
            size: 12
            text: root.period.note
            width: parent.width
        }
        Row {
            spacing: 5

            SpokenCaption {
                color: Colors.tertiary
                size: 11
                text: root.period.prevLabel
            }
            SpokenCaption {
                color: Colors.tertiary
                size: 11
                text: root.period.prevCost
            }
        }
    }
}
