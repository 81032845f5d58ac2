pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The bars of a page with their scale, their labels and a tip for one of them. The pointer hovers
/// and scrolls, and so does the keyboard, for which all of it is one stop.
HistoryChart {
    id: root

    required property string label
    /// On either side of the plot, to the edges of the panel's body.
    readonly property real margin: (Metrics.wideBody - Metrics.chartWidth) / 2

    /// For how many milliseconds the bars have grown since they appeared.
    property real grown: 0
    readonly property bool growing: growth.running

    activeFocusOnTab: true
    implicitHeight: Metrics.areaHeight + labels.height
    implicitWidth: Metrics.chartWidth

    Accessible.description: root.hovered < 0 ? "" : root.tip.spoken
    Accessible.focusable: true
    Accessible.name: root.label
    Accessible.role: Accessible.List

    onAppeared: growth.restart()

    NumberAnimation {
        id: growth

        duration: Motion.growDelay(root.count - 1) + Motion.grow
        from: 0
        property: "grown"
        target: root
        to: duration
    }
    FocusRing {
        active: root.activeFocus
        anchors.fill: parent
        anchors.margins: -6
        anchors.topMargin: -9
        radius: 8
    }
    SpokenCaption {
        anchors.bottom: line.top
        anchors.bottomMargin: 2
        color: Colors.tertiary
        size: 11
        text: root.reference
    }
    Rectangle {
        id: line

        color: Colors.track
        height: 1
        opacity: 0.7
        visible: root.reference
        width: Metrics.chartWidth
        y: Metrics.areaHeight - Metrics.chartHeight
    }
    Repeater {
        model: root.count

        ChartBar {
            chart: root
            // Only while they do: bars may come at any time.
            grown: root.growing ? root.grown : Infinity
            margin: root.margin
        }
    }
    /// As high as the labels, also where there are none.
    Caption {
        id: labels

        size: root.labelSize
        topPadding: 8
        y: Metrics.areaHeight
    }
    InputView {
        cell: root.cell
        height: Metrics.areaHeight
        width: Metrics.chartWidth

        onHover: x => root.hoverAt(x)
        onSteps: n => root.scroll(n)
        onUnhover: root.unhover()
    }
    ChartTip {
        leftmost: -root.margin
        rightmost: Metrics.chartWidth + root.margin
        shown: root.hovered >= 0
        tip: root.tip
    }
}
