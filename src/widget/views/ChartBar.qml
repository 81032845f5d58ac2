pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// One bar of the chart with the label below it.
Item {
    id: root

    required property int index
    required property HistoryChart chart
    /// How far a label may stick out of the plot.
    required property real margin
    /// For how many milliseconds the bars have grown.
    required property real grown

    readonly property chartColumn column: root.chart.columns[root.index]
    readonly property bool hovered: root.chart.hovered === root.index

    height: Metrics.areaHeight
    width: root.column.width
    x: root.column.x

    Accessible.ignored: root.column.padding
    Accessible.name: root.column.spoken
    Accessible.role: Accessible.ListItem

    BarShape {
        column: root.column
        growth: Motion.growth(root.index, root.grown)
        opacity: root.chart.opacities[root.index]

        Behavior on opacity {
            NumberAnimation {
                duration: Motion.hover
                easing.type: Easing.OutCubic
            }
        }
    }
    Caption {
        readonly property real place: root.x + (root.width - width) / 2

        anchors.top: parent.bottom
        anchors.topMargin: 8
        color: root.hovered ? Colors.secondary : Colors.tertiary
        size: root.chart.labelSize
        text: root.column.label
        visible: root.column.labelShown
        x: Math.max(Math.min(place, Metrics.chartWidth + root.margin - width), -root.margin) - root.x
    }
}
