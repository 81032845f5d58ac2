pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Holds what pops: it fades and moves downwards, the same both ways. So short a way is kept when
/// motion is reduced.
Item {
    id: root

    required property bool shown
    property int duration: Motion.transition

    property real reveal: root.shown ? 1 : 0

    implicitHeight: root.childrenRect.height
    opacity: root.reveal
    visible: root.reveal > 0

    transform: Translate {
        y: Motion.popShift * (1 - root.reveal)
    }
    Behavior on reveal {
        NumberAnimation {
            duration: root.duration
            easing.type: Easing.OutCubic
        }
    }
}
