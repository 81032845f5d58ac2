pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Rows that belong together, with their title above and a note below.
Column {
    id: root

    required property string title
    property string note
    default property alias rows: body.data

    spacing: 6

    Accessible.name: root.title
    Accessible.role: Accessible.Grouping

    SpokenCaption {
        color: Colors.secondary
        font.weight: Font.DemiBold
        leftPadding: 4
        size: 11
        text: root.title
        width: root.width
    }
    Item {
        implicitHeight: body.implicitHeight
        width: root.width

        Rectangle {
            anchors.fill: parent
            color: Colors.track
            opacity: 0.58
            radius: 11
        }
        Column {
            id: body

            width: parent.width
        }
    }
    Note {
        leftPadding: 4
        rightPadding: 4
        text: root.note
        visible: root.note
        width: root.width
    }
}
