pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// One rate-limit window: its name and used percentage, the track, and what is to be said about it.
Item {
    id: root

    required property limitRow row
    required property string paceTip

    /// The note and the warning do not fit beside each other.
    readonly property bool stacked: note.implicitWidth + 10 + runout.implicitWidth > root.width

    implicitHeight: root.row.runout && root.stacked ? runout.y + runout.height : note.y + note.height

    Accessible.name: root.row.spoken
    Accessible.role: Accessible.StaticText

    Caption {
        anchors.right: percent.left
        anchors.rightMargin: 8
        anchors.left: parent.left
        color: Colors.secondary
        size: 13
        text: root.row.label
    }
    Roll {
        id: percent

        anchors.right: parent.right
        color: root.row.percentColor
        font.weight: Font.DemiBold
        size: 13
        text: root.row.percent
        value: root.row.value
    }
    LimitTrack {
        id: track

        anchors.top: percent.bottom
        anchors.topMargin: 5
        paceTip: root.paceTip
        row: root.row
        width: root.width
    }
    Caption {
        id: note

        anchors.top: track.bottom
        anchors.topMargin: 5
        color: Colors.tertiary
        size: 11
        text: root.row.note
        width: root.width
    }
    Caption {
        id: runout

        color: root.row.runoutColor
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignRight
        size: 11
        text: root.row.runout
        width: root.width
        y: root.stacked ? note.y + note.height : note.y
    }
}
