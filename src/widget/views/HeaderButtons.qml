pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// What can be done with the panel, as a row of buttons that share the room there is.
Row {
    id: root

    required property Dashboard dashboard
    required property PanelActions actions
    required property real room

    readonly property int count: 4 + Number(root.dashboard.updateOffered) + Number(root.dashboard.pinnable)
    readonly property real buttonWidth: Math.min(26, Math.floor(root.room / root.count))

    IconButton {
        iconName: "refresh-cw"
        label: root.dashboard.texts.refresh
        width: root.buttonWidth

        onClicked: root.actions.refreshRequested()
    }
    IconButton {
        iconName: "circle-arrow-up"
        label: root.dashboard.texts.update
        lit: true
        visible: root.dashboard.updateOffered
        width: root.buttonWidth

        onClicked: root.actions.updateRequested()
    }
    IconButton {
        iconName: "chart-column"
        label: root.dashboard.texts.statistics
        lit: root.dashboard.expanded
        toggles: true
        width: root.buttonWidth

        onClicked: root.actions.expandRequested()
    }
    IconButton {
        iconName: "settings"
        label: root.dashboard.texts.settings
        width: root.buttonWidth

        onClicked: root.actions.settingsRequested()
    }
    IconButton {
        iconName: root.dashboard.pinned ? "pin" : "pin-off"
        label: root.dashboard.pinned ? root.dashboard.texts.unpin : root.dashboard.texts.pin
        lit: root.dashboard.pinned
        visible: root.dashboard.pinnable
        width: root.buttonWidth

        onClicked: root.actions.pinRequested()
    }
    IconButton {
        iconName: "eye-off"
        label: root.dashboard.texts.hide
        width: root.buttonWidth

        onClicked: root.actions.hideRequested()
    }
}
