pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The whole panel: a dark, rounded surface with the cards on it, compact or wide.
Item {
    id: root

    required property Dashboard dashboard
    required property PanelActions actions

    readonly property real margin: 14
    /// Wide as long as anything is to be seen that needs the width.
    readonly property bool wide: root.dashboard.expanded || history.reveal > 0
    readonly property real body: root.wide ? Metrics.wideBody : Metrics.compactBody

    height: column.implicitHeight + 2 * root.margin
    width: root.body + 2 * root.margin

    Accessible.name: "Kestrelbay"
    Accessible.role: Accessible.Pane

    Shortcut {
        sequence: "Ctrl+Q"

        onActivated: root.actions.quitRequested()
    }
    // Once a press: when the window manager takes the pointer over, the handler is told of one more
    // move with the button down, after it is up.
    DragHandler {
        id: drag

        property bool asked: false

        target: null

        onActiveChanged: {
            if (drag.active && !drag.asked)
                root.actions.moveRequested();
            drag.asked = true;
        }
        onGrabChanged: transition => {
            if (transition === PointerDevice.GrabPassive)
                drag.asked = false;
        }
    }
    Rectangle {
        anchors.fill: parent
        border.color: Colors.track
        border.width: 1
        color: Colors.surface
        radius: Metrics.radius
    }
    Column {
        id: column

        spacing: 14
        width: root.body
        x: root.margin
        y: root.margin

        Header {
            actions: root.actions
            dashboard: root.dashboard
            width: parent.width
        }
        LimitsCard {
            freshness: root.dashboard.freshness
            paceTip: root.dashboard.texts.pace
            rows: root.dashboard.limits
            wide: root.wide
            width: parent.width
        }
        Divider {
            width: parent.width
        }
        SummaryCard {
            cells: root.dashboard.summary
            note: root.dashboard.note
            wide: root.wide
            width: parent.width
        }
        Unfold {
            id: history

            shown: root.dashboard.expanded && !root.dashboard.note
            width: parent.width

            Divider {
                width: parent.width
            }
            HistoryCard {
                dashboard: root.dashboard
                width: parent.width
                y: column.spacing
            }
        }
    }
}
