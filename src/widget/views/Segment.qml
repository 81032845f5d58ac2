pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// One choice of a SegmentedSwitch, which has the keyboard for all of them.
Item {
    id: root

    required property int index
    required property string modelData
    required property bool taken
    required property bool ringed
    required property real sidePadding

    signal clicked

    implicitWidth: label.implicitWidth + 2 * root.sidePadding

    Accessible.checkable: true
    Accessible.checked: root.taken
    Accessible.name: root.modelData
    Accessible.role: Accessible.PageTab
    Accessible.onPressAction: root.clicked()

    Rectangle {
        anchors.fill: parent
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
    Caption {
        id: label

        anchors.centerIn: parent
        color: root.taken ? Colors.primary : hover.hovered ? Colors.strong : Colors.secondary
        font.weight: root.taken ? Font.DemiBold : Font.Normal
        fontSizeMode: Text.HorizontalFit
        horizontalAlignment: Text.AlignHCenter
        minimumPixelSize: 9
        text: root.modelData
        width: Math.min(implicitWidth, root.width - 4)
        transform: PressStyle {
            held: tap.pressed
            label: label
        }
    }
    HoverHandler {
        id: hover
    }
    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds

        onTapped: root.clicked()
    }
    FocusRing {
        active: root.ringed
        anchors.fill: parent
        radius: 7
    }
}
