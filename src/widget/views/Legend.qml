pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The models of a page on one line or two. What was once two lines high stays so, lest the panel
/// change its height under a pointer that scrolls.
Item {
    id: root

    required property list<legendItem> items

    property real tallest: line.height

    implicitHeight: root.tallest

    onVisibleChanged: root.tallest = Math.max(line.height, flow.height)

    Caption {
        id: line

        size: 11
    }
    Flow {
        id: flow

        spacing: 10
        width: root.width

        onHeightChanged: root.tallest = Math.max(root.tallest, flow.height)

        Repeater {
            id: chips

            model: root.items

            // Where each two of them fit on a line, four take no more than two lines.
            LegendChip {
                required property int index

                readonly property LegendChip partner: chips.count > 2 ? chips.itemAt(index ^ 1) as LegendChip : null

                widest: partner ? Math.max(root.width - flow.spacing - partner.naturalWidth,
                                           Math.floor((root.width - flow.spacing) / 2))
                                : root.width
            }
        }
    }
}
