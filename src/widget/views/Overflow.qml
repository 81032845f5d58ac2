pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Holds what may be higher than there is room for, and scrolls it then: by the wheel, and to whatever
/// has the keyboard. The pointer does not drag it, because it drags the panel.
Item {
    id: root

    required property real contentHeight
    default property alias contents: body.data

    readonly property real hidden: Math.max(0, root.contentHeight - root.height)
    readonly property Item focused: root.Window.activeFocusItem
    property real wanted: 0

    function follow() {
        if (!body.activeFocus)
            return;
        const room = 12;
        const top = root.focused.mapToItem(body, 0, 0).y - room;
        const bottom = top + root.focused.height + 2 * room;
        root.scroll(Math.min(Math.max(root.wanted, bottom - root.height), top));
    }
    function scroll(y) {
        root.wanted = Math.max(0, Math.min(y, root.hidden));
    }

    clip: root.hidden > 0

    onFocusedChanged: root.follow()
    onHeightChanged: root.follow()

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        enabled: root.hidden > 0
        target: null

        onWheel: event => root.scroll(root.wanted - (event.pixelDelta.y || event.angleDelta.y / 3))
    }
    FocusScope {
        id: body

        height: root.contentHeight
        width: root.width
        y: -Math.min(root.wanted, root.hidden)

        Behavior on y {
            enabled: root.hidden > 0

            NumberAnimation {
                duration: Motion.tip
                easing.type: Easing.OutCubic
            }
        }
    }
    Rectangle {
        anchors.right: parent.right
        anchors.rightMargin: 4
        color: Colors.tertiary
        height: root.height * root.height / root.contentHeight
        opacity: 0.75
        radius: width / 2
        visible: root.hidden > 0
        width: 3
        y: -body.y * root.height / root.contentHeight
    }
}
