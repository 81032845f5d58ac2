pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// The groups of one tab, scrolled where they do not fit. The control with the keyboard is always in sight.
Flickable {
    id: root

    default property alias groups: column.data

    readonly property Item focused: root.Window.activeFocusItem

    function follow() {
        if (!body.activeFocus)
            return;
        const room = 16;
        const top = root.focused.mapToItem(body, 0, 0).y - room;
        const bottom = top + root.focused.height + 2 * room;
        root.scroll(top < root.contentY ? top : Math.max(root.contentY, bottom - root.height));
    }
    function scroll(y) {
        scrolling.stop();
        scrolling.to = Math.max(0, Math.min(y, root.contentHeight - root.height));
        scrolling.start();
    }

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: column.implicitHeight + 24
    contentWidth: root.width
    objectName: "page"

    Keys.onPressed: event => {
        const page = event.key === Qt.Key_PageUp ? -1 : event.key === Qt.Key_PageDown ? 1 : 0;
        event.accepted = page !== 0;
        if (page !== 0)
            root.scroll(root.contentY + page * (root.height - 40));
    }
    ScrollBar.vertical: ScrollSign {
    }
    onFocusedChanged: root.follow()
    onHeightChanged: root.follow()

    NumberAnimation {
        id: scrolling

        duration: Motion.tip
        easing.type: Easing.OutCubic
        property: "contentY"
        target: root
    }
    FocusScope {
        id: body

        height: column.implicitHeight
        width: root.width

        Column {
            id: column

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 16
            width: Math.min(root.width - 40, 460)
        }
    }
}
