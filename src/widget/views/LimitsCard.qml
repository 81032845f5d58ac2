pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// How close the provider's two rate-limit windows are to their ends. The compact panel tells the
/// age of the readings only when they are old.
Column {
    id: root

    required property list<limitRow> rows
    required property freshness freshness
    required property string paceTip
    required property int provider
    required property bool wide

    spacing: 12

    FreshnessRow {
        readings: root.freshness
        visible: root.freshness.text && (root.wide || !root.freshness.fresh)
        width: root.width
    }
    Repeater {
        model: root.rows.length

        LimitItem {
            required property int index

            paceTip: root.paceTip
            provider: root.provider
            row: root.rows[index]
            width: root.width
        }
    }
}
