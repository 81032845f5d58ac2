pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// A text that changes in sight: its digits roll in the direction of its value, or, where it is no
/// number, the old text fades into the new.
Item {
    id: root

    required property string text
    property real value: 0
    property alias digits: rolling.digits
    property alias size: resting.size
    property alias color: resting.color
    property alias font: resting.font

    implicitHeight: resting.implicitHeight
    implicitWidth: resting.implicitWidth

    Caption {
        id: resting

        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        opacity: rolling.progress < 1 ? 0 : 1
        text: rolling.shown
        width: root.width
    }
    RollingText {
        id: rolling

        color: resting.color
        // The size that the text rests in, where it had to shrink.
        font.family: resting.font.family
        font.pixelSize: resting.fontInfo.pixelSize
        font.weight: resting.font.weight
        height: implicitHeight
        text: root.text
        value: root.value
        visible: progress < 1
        width: implicitWidth

        onRolled: change.restart()
    }
    NumberAnimation {
        id: change

        duration: Motion.number
        easing.type: Easing.OutCubic
        from: 0
        property: "progress"
        target: rolling
        to: 1
    }
}
