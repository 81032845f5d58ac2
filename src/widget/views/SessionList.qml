pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestrelbay

/// The recent sessions, as high as they need and no higher than their bound; what goes on below fades.
Item {
    id: root

    required property Dashboard dashboard
    required property HistoryCard card

    implicitHeight: Math.min(list.count > 0 ? list.contentHeight : empty.implicitHeight,
                             Metrics.sessionsMaxHeight, root.card.listRoom)

    ListView {
        id: list

        activeFocusOnTab: list.count > 0
        anchors.fill: parent
        anchors.leftMargin: -6
        anchors.rightMargin: -6
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        highlightMoveDuration: Motion.hover
        highlightMoveVelocity: -1
        keyNavigationEnabled: true
        model: root.dashboard.sessions
        objectName: "sessions"
        reuseItems: true

        Accessible.name: root.dashboard.texts.sessions
        Accessible.role: Accessible.List
        T.ScrollBar.vertical: ScrollHandle {
            policy: list.contentHeight > list.height ? T.ScrollBar.AsNeeded : T.ScrollBar.AlwaysOff
        }

        delegate: SessionRow {
            width: ListView.view.width - 12
            x: 6
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: -6
        anchors.right: parent.right
        anchors.rightMargin: -6
        height: Metrics.sessionFade
        visible: !list.atYEnd && list.count > 0

        gradient: Gradient {
            GradientStop {
                color: Qt.alpha(Colors.surface, 0)
                position: 0
            }
            GradientStop {
                color: Colors.surface
                position: 1
            }
        }
    }
    FocusRing {
        active: list.activeFocus
        anchors.fill: parent
        anchors.margins: -6
        radius: 9
    }
    SpokenCaption {
        id: empty

        bottomPadding: 12
        color: Colors.secondary
        horizontalAlignment: Text.AlignHCenter
        text: root.dashboard.texts.noSessions
        topPadding: 12
        visible: list.count === 0
        width: root.width
    }
}
