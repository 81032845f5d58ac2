pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// A button that is only an icon, with its name as tooltip.
Item {
    id: root

    required property string label
    required property string iconName
    property bool lit: false
    /// The button is on or off, and `lit` tells which.
    property bool toggles: false

    readonly property color tint: root.lit ? Colors.accent : hover.hovered ? Colors.strong : Colors.icon

    signal clicked

    function press(event) {
        if (!event.isAutoRepeat)
            root.clicked();
    }

    activeFocusOnTab: true
    implicitHeight: 26
    implicitWidth: 26

    Accessible.checkable: root.toggles
    Accessible.checked: root.toggles && root.lit
    Accessible.focusable: true
    // What is hidden would be read out none the less.
    Accessible.ignored: !root.visible
    Accessible.name: root.label
    Accessible.role: Accessible.Button
    Accessible.onPressAction: root.clicked()
    Keys.onEnterPressed: event => root.press(event)
    Keys.onReturnPressed: event => root.press(event)
    Keys.onSpacePressed: event => root.press(event)

    FocusRing {
        active: root.activeFocus
        anchors.fill: parent
        radius: 8
    }
    TintedIcon {
        id: icon

        anchors.centerIn: parent
        color: root.tint
        name: root.iconName
        smooth: pressing.xScale < 1

        transform: PressStyle {
            id: pressing

            held: tap.pressed
            label: icon
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
    Tip {
        text: root.label
        wanted: (hover.hovered || root.activeFocus) && !tap.pressed
    }
}
