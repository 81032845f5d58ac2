pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// What one span cost: its name, the money, the tokens.
Column {
    id: root

    required property summaryCell cell
    property bool prominent: true

    spacing: 1

    Accessible.name: root.cell.spoken
    Accessible.role: Accessible.StaticText

    Caption {
        color: Colors.tertiary
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        size: 11
        text: root.cell.label
        width: root.width
    }
    Roll {
        color: root.prominent ? Colors.primary : Colors.secondary
        size: root.prominent ? 17 : 14
        font.weight: Font.DemiBold
        text: root.cell.cost
        value: root.cell.amount
        width: root.width
    }
    Roll {
        color: Colors.tertiary
        size: 11
        text: root.cell.tokens
        value: root.cell.spent
        width: root.width
    }
}
