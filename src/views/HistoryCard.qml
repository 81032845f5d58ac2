pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Spending over time: a page of days, weeks or months as bars, or the recent sessions.
Column {
    id: root

    required property Dashboard dashboard

    spacing: 14

    SegmentedSwitch {
        choices: root.dashboard.tabNames
        current: root.dashboard.tab
        label: root.dashboard.texts.history
        stretch: true
        width: root.width

        onChosen: index => root.dashboard.selectTab(index)
    }
    Item {
        implicitHeight: root.dashboard.listsSessions ? sessions.implicitHeight : periods.implicitHeight
        width: root.width

        Unfold {
            id: periods

            shown: !root.dashboard.listsSessions
            width: parent.width

            Column {
                spacing: 14
                width: parent.width

                PeriodLine {
                    period: root.dashboard.period
                    width: parent.width
                }
                HistoryPlot {
                    label: root.dashboard.texts.history
                    model: root.dashboard.model
                    x: margin
                    // The tip may lie over the legend.
                    z: 1
                }
                Legend {
                    items: root.dashboard.legend
                    width: parent.width
                }
            }
        }
        Unfold {
            id: sessions

            shown: root.dashboard.listsSessions
            width: parent.width

            SessionList {
                emptyText: root.dashboard.texts.noSessions
                label: root.dashboard.texts.sessions
                sessions: root.dashboard.sessions
                width: parent.width
            }
        }
    }
}
