pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The whole panel: a dark, rounded surface with the cards on it, compact or wide.
Item {
    id: root

    required property WidgetModel model
    required property PanelActions actions

    readonly property color surface: "#f51c1c1e"
    readonly property real margin: 14
    readonly property bool wide: root.model.expanded
    readonly property real body: root.wide ? Metrics.wideBody : Metrics.compactBody

    height: column.implicitHeight + 2 * root.margin
    width: root.body + 2 * root.margin

    Accessible.name: "Kestrelbay"
    Accessible.role: Accessible.Pane

    DragHandler {
        target: null

        onActiveChanged: if (active) root.actions.moveRequested()
    }
    Rectangle {
        anchors.fill: parent
        border.color: Colors.track
        border.width: 1
        color: root.surface
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
            model: root.model
            width: parent.width
        }
        Divider {
            width: parent.width
        }
        SummaryCard {
            cells: root.model.summary
            note: root.model.note
            wide: root.wide
            width: parent.width
        }
        Unfold {
            shown: root.wide && !root.model.note
            width: parent.width

            Divider {
                width: parent.width
            }
            SessionList {
                emptyText: root.model.texts.noSessions
                label: root.model.texts.sessions
                sessions: root.model.sessionList
                surface: root.surface
                width: parent.width
                y: column.spacing
            }
        }
    }
}
