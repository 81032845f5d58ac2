pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// One rate-limit window: its name and used percentage, the track, and what is to be said about it.
Item {
    id: root

    required property limitRow row
    required property string paceTip
    /// Whose limits they are.
    required property int provider

    /// The note and the warning did not fit beside each other. That stays so while their texts change,
    /// lest the panel change its height as time passes.
    property bool stacked: false
    readonly property bool crowded: root.overlaps()

    function overlaps() {
        return root.row.runout !== "" && note.implicitWidth + 10 + runout.implicitWidth > root.width;
    }
    function settle() {
        root.stacked = root.overlaps();
    }

    implicitHeight: root.stacked ? runout.y + runout.height : note.y + note.height

    onCrowdedChanged: root.stacked = root.stacked || root.crowded
    onProviderChanged: others.restart()
    onWidthChanged: root.settle()

    Accessible.name: root.row.spoken
    Accessible.role: Accessible.StaticText

    // The rows become the other's a little later.
    Timer {
        id: others

        interval: 0

        onTriggered: root.settle()
    }
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
