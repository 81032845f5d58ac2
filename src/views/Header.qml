pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The panel's first row: which assistant is shown, and what can be done.
Item {
    id: root

    required property WidgetModel model
    required property PanelActions actions

    implicitHeight: providers.implicitHeight

    SegmentedSwitch {
        id: providers

        choices: root.model.providerNames
        current: root.model.providerIndex
        label: root.model.texts.providers

        onChosen: index => root.actions.providerRequested(index)
    }
    Row {
        anchors.right: parent.right

        IconButton {
            iconSource: "icons/refresh-cw.svg"
            label: root.model.texts.refresh

            onClicked: root.actions.refreshRequested()
        }
        IconButton {
            iconSource: "icons/chart-column.svg"
            label: root.model.texts.statistics
            lit: root.model.expanded

            onClicked: root.actions.expandRequested()
        }
    }
}
