pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// A text that changes in sight: its digits roll in the direction of its value, or, where it is no
/// number, the old text fades into the new.
Item {
    id: root

    required property string text
    property real value: 0
    property bool digits: true
    property alias size: resting.size
    property alias color: resting.color
    property alias font: resting.font

    property real progress: 1

    implicitHeight: resting.implicitHeight
    implicitWidth: resting.implicitWidth

    Accessible.name: root.text
    Accessible.role: Accessible.StaticText

    RollingText {
        id: rolling

        text: root.text
        value: root.value

        onRolled: change.restart()
    }
    NumberAnimation {
        id: change

        duration: Motion.number
        easing.type: Easing.OutCubic
        from: 0
        property: "progress"
        target: root
        to: 1
    }

    Caption {
        id: resting

        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        opacity: root.digits ? (root.progress < 1 ? 0 : 1) : root.progress
        text: rolling.shown
        width: root.width

        Accessible.ignored: true
    }
    Caption {
        color: resting.color
        font: resting.font
        opacity: 1 - root.progress
        text: rolling.before
        visible: !root.digits && root.progress < 1
        width: root.width

        Accessible.ignored: true
    }
    Row {
        Repeater {
            model: root.digits && root.progress < 1 ? rolling.glyphs : []

            RollingGlyph {
                direction: rolling.direction
                glyphColor: resting.color
                // The size that the text rests in, where it had to shrink.
                glyphSize: resting.fontInfo.pixelSize
                glyphFont: resting.font
                progress: root.progress
            }
        }
    }
}
