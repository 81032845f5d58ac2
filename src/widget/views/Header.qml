pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The panel's first row: which assistant is shown, and what can be done.
Item {
    id: root

    required property Dashboard dashboard
    required property PanelActions actions

    implicitHeight: providers.implicitHeight

    SegmentedSwitch {
        id: providers

        choices: root.dashboard.providerNames
        current: root.dashboard.providerIndex
        label: root.dashboard.texts.providers
        segmentPadding: buttons.count > 4 && !root.dashboard.expanded ? 6 : 10

        onChosen: index => root.actions.providerRequested(index)
    }
    HeaderButtons {
        id: buttons

        actions: root.actions
        anchors.right: parent.right
        dashboard: root.dashboard
        room: root.width - providers.width - 4
    }
}
