pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The provider's spending by calendar span: three columns, the spans before them in the second row.
/// Without statistics it says why there are none.
Item {
    id: root

    required property list<summaryCell> cells
    required property string note
    required property bool wide

    readonly property int columns: 3

    implicitHeight: root.note ? message.implicitHeight : grid.implicitHeight

    Grid {
        id: grid

        columnSpacing: 6
        columns: root.columns
        rowSpacing: 10
        visible: !root.note
        width: root.width

        Repeater {
            model: 2 * root.columns

            SummaryItem {
                required property int index

                cell: root.cells[index]
                prominent: index < root.columns
                visible: root.wide || prominent
                width: (grid.width - (root.columns - 1) * grid.columnSpacing) / root.columns
            }
        }
    }
    SpokenCaption {
        id: message

        bottomPadding: 18
        color: Colors.secondary
        horizontalAlignment: Text.AlignHCenter
        maximumLineCount: 4
        text: root.note
        topPadding: 18
        visible: root.note
        width: root.width
        wrapMode: Text.Wrap
    }
}
