pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// What a control is called, beside it after a moment.
ToolTip {
    id: root

    delay: 600
    padding: 6

    background: Rectangle {
        border.color: Colors.track
        border.width: 1
        color: Qt.alpha(Qt.lighter(Colors.surface, 1.6), 1)
        radius: 7
    }
    contentItem: Caption {
        size: 11
        text: root.text
    }
    enter: Transition {
        NumberAnimation {
            duration: Motion.tip
            easing.type: Easing.OutCubic
            from: 0
            property: "opacity"
            to: 1
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: Motion.tip
            easing.type: Easing.OutCubic
            property: "opacity"
            to: 0
        }
    }
}
