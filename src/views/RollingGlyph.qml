pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// One place of a changing text: the old sign leaves as the new one comes.
Item {
    id: root

    required property rollGlyph modelData
    required property font glyphFont
    required property real glyphSize
    required property color glyphColor
    required property int direction
    required property real progress

    readonly property real travelled: root.modelData.rolls ? root.progress : 1

    clip: root.modelData.rolls
    implicitHeight: coming.implicitHeight
    implicitWidth: coming.implicitWidth

    Caption {
        color: root.glyphColor
        font.family: root.glyphFont.family
        font.pixelSize: root.glyphSize
        font.weight: root.glyphFont.weight
        text: root.modelData.before
        visible: root.modelData.rolls
        y: -root.direction * root.travelled * root.height

        Accessible.ignored: true
    }
    Caption {
        id: coming

        color: root.glyphColor
        font.family: root.glyphFont.family
        font.pixelSize: root.glyphSize
        font.weight: root.glyphFont.weight
        text: root.modelData.after
        y: root.direction * (1 - root.travelled) * root.height

        Accessible.ignored: true
    }
}
