pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Holds what unfolds: it appears fading in while moving down into its place, and disappears only
/// fading. So short a way is kept when motion is reduced.
Item {
    id: root

    required property bool shown

    property real reveal: root.shown ? 1 : 0

    implicitHeight: root.childrenRect.height
    opacity: root.reveal
    visible: root.reveal > 0

    transform: Translate {
        y: root.shown ? -Motion.unfoldShift * (1 - root.reveal) : 0
    }
    Behavior on reveal {
        NumberAnimation {
            duration: Motion.transition
            easing.type: Easing.OutCubic
        }
    }
}
