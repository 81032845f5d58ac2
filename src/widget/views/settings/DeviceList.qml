pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// The linked devices, of which some are in sight and only those are made. Arrow keys go from one to
/// the next.
ListView {
    id: root

    required property DataPage page

    readonly property real rowHeight: Math.max(46, Math.ceil(38 * Metrics.textScale))
    readonly property real mostRows: 5.5

    /// The last one has gone, and with it the keyboard's place.
    signal emptied

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    highlightMoveDuration: Motion.hover
    highlightMoveVelocity: -1
    implicitHeight: Math.min(root.count, root.mostRows) * root.rowHeight
    interactive: root.count > root.mostRows
    keyNavigationEnabled: true
    model: root.page.devices
    visible: root.count > 0

    Accessible.name: root.page.texts.label("syncLinked")
    Accessible.role: Accessible.List
    ScrollBar.vertical: ScrollSign {
    }
    onCountChanged: {
        root.currentIndex = Math.min(Math.max(root.currentIndex, 0), root.count - 1);
        if (root.count === 0 && root.focus)
            root.emptied();
    }

    delegate: DeviceItem {
        id: device

        current: ListView.isCurrentItem
        height: root.rowHeight
        unlinkText: root.page.texts.label("syncUnlink")
        width: root.width

        onActiveFocusChanged: {
            if (device.activeFocus)
                root.currentIndex = device.index;
        }
        onIncludeRequested: on => root.page.sync.include(device.deviceId, on)
        onUnlinkRequested: root.page.sync.unlink(device.deviceId)
    }
}
