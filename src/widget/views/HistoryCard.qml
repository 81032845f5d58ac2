pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Spending over time: a page of days, weeks or months as bars, or the recent sessions.
Column {
    id: root

    required property Dashboard dashboard
    /// How high it should be at most, for which the list of sessions gives way.
    required property real room

    readonly property real listRoom: Math.max(3 * Metrics.sessionRow, root.room - tabs.implicitHeight - root.spacing)

    spacing: 14

    SegmentedSwitch {
        id: tabs

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

            // Many never ask for them.
            Loader {
                id: list

                readonly property bool wanted: root.dashboard.listsSessions

                width: parent.width

                onWantedChanged: {
                    if (list.wanted && list.status === Loader.Null)
                        list.setSource("SessionList.qml", {
                            card: root,
                            dashboard: root.dashboard
                        });
                }
            }
        }
    }
}
