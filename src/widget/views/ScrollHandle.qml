pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestrelbay

/// A handle at the edge of what scrolls, seen while it does.
T.ScrollBar {
    id: root

    minimumSize: root.width / root.height
    padding: 1
    visible: root.policy !== T.ScrollBar.AlwaysOff
    width: 5

    contentItem: Rectangle {
        color: Colors.tertiary
        opacity: root.active && root.size < 1 ? 0.75 : 0
        radius: width / 2

        Behavior on opacity {
            NumberAnimation {
                duration: Motion.tip
            }
        }
    }
}
