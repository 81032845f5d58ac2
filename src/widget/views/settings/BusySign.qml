pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Turns while something goes on; stands still while motion is reduced.
TintedIcon {
    id: root

    required property bool busy

    name: "refresh-cw"
    opacity: root.busy ? 1 : 0
    smooth: true
    visible: root.opacity > 0

    Behavior on opacity {
        NumberAnimation {
            duration: Motion.tab
        }
    }
    RotationAnimator on rotation {
        duration: 1400
        from: 0
        loops: Animation.Infinite
        running: root.visible && !Motion.reduced
        to: 360
    }
}
