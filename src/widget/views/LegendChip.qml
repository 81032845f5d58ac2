pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Tells which model has which colour, and how much of the page's spending it took.
Item {
    id: root

    required property legendItem modelData
    required property real widest

    readonly property real naturalWidth: label.x + label.implicitWidth

    implicitHeight: label.implicitHeight
    implicitWidth: label.x + label.width

    Accessible.name: root.modelData.text
    Accessible.role: Accessible.StaticText

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        color: root.modelData.color
        height: 7
        radius: 2
        width: 7
    }
    Caption {
        id: label

        color: Colors.secondary
        // The share at the end is what a legend is looked at for.
        elide: Text.ElideMiddle
        size: 11
        text: root.modelData.text
        width: Math.min(implicitWidth, root.widest - x)
        x: 12
    }
}
