pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// One choice of a SegmentedSwitch, which has the keyboard for all of them.
AbstractButton {
    id: root

    required property int index
    required property string modelData
    required property bool taken
    required property bool ringed
    required property real sidePadding

    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    implicitWidth: root.implicitContentWidth + 2 * root.sidePadding
    text: root.modelData

    Accessible.checkable: true
    Accessible.checked: root.taken
    Accessible.name: root.modelData
    Accessible.role: Accessible.PageTab

    background: Rectangle {
        color: Colors.chosen
        opacity: root.taken ? 1 : 0
        radius: 7

        Behavior on opacity {
            NumberAnimation {
                duration: Motion.tab
                easing.type: Easing.OutCubic
            }
        }
    }
    contentItem: Caption {
        color: root.taken ? Colors.primary : root.hovered ? Colors.strong : Colors.secondary
        font.weight: root.taken ? Font.DemiBold : Font.Normal
        horizontalAlignment: Text.AlignHCenter
        text: root.modelData
        verticalAlignment: Text.AlignVCenter

        Accessible.ignored: true
    }

    FocusRing {
        active: root.ringed
        anchors.fill: parent
        radius: 7
    }
}
