pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The pressed look of a button: its label shrinks about its centre while the button is held.
Scale {
    id: root

    required property Item label
    required property bool held
    property real scale: Motion.pressScale

    readonly property real factor: root.held ? root.scale : 1

    origin.x: root.label.width / 2
    origin.y: root.label.height / 2
    xScale: root.factor
    yScale: root.factor

    Behavior on xScale {
        NumberAnimation {
            duration: Motion.press
            easing.type: Easing.OutCubic
        }
    }
    Behavior on yScale {
        NumberAnimation {
            duration: Motion.press
            easing.type: Easing.OutCubic
        }
    }
}
