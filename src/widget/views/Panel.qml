pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The whole panel: a dark, rounded surface with the cards on it, compact or wide.
Item {
    id: root

    required property Dashboard dashboard
    required property PanelActions actions

    /// Whether the surface is blended with what is behind it; else it fills the window, corners and all.
    property bool translucent: true
    /// How high it may be. First the list of sessions gives way, then all below the header scrolls.
    property real room: Infinity

    readonly property real margin: 14
    readonly property bool wide: root.dashboard.expanded
    readonly property real body: root.wide ? Metrics.wideBody : Metrics.compactBody

    // The window comes to this size in its own time, and what does not fit by then is cut off.
    clip: true
    implicitHeight: Math.min(root.room, below.y + below.contentHeight + root.margin)
    implicitWidth: root.body + 2 * root.margin

    Accessible.name: "Kestrelbay"
    Accessible.role: Accessible.Pane

    // What changed while the panel was away stands there when it comes back.
    Binding {
        property: "still"
        target: Motion
        value: !root.dashboard.revealed
    }
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
        color: root.translucent ? Colors.surface : Qt.rgba(Colors.surface.r, Colors.surface.g, Colors.surface.b, 1)
        radius: root.translucent ? Metrics.radius : 0

        TapHandler {
            // Who reads the history may click fast.
            onDoubleTapped: point => {
                if (!history.shown || point.position.y < history.mapToItem(root, 0, 0).y)
                    root.actions.expandRequested();
            }
        }
    }
    Header {
        id: header

        actions: root.actions
        dashboard: root.dashboard
        width: root.body
        x: root.margin
        y: root.margin
    }
    Overflow {
        id: below

        contentHeight: column.implicitHeight + (history.shown ? history.implicitHeight + column.spacing : 0)
        height: root.implicitHeight - below.y - root.margin
        width: root.body + 2 * root.margin
        y: header.y + header.implicitHeight + column.spacing

        Column {
            id: column

            spacing: 14
            width: root.body
            x: root.margin

            LimitsCard {
                freshness: root.dashboard.freshness
                paceTip: root.dashboard.texts.pace
                provider: root.dashboard.providerIndex
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
        }
        // Beside the column, because it goes on being seen while it fades and counts no more.
        Unfold {
            id: history

            shown: root.dashboard.expanded && !root.dashboard.note
            width: Metrics.wideBody
            x: root.margin
            y: column.height + column.spacing

            Divider {
                width: parent.width
            }
            HistoryCard {
                dashboard: root.dashboard
                room: root.room - below.y - history.y - column.spacing - root.margin
                width: parent.width
                y: column.spacing
            }
        }
    }
}
