pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay
import QtQuick.Controls.Basic

/// A button that is only an icon, with its name as tooltip.
AbstractButton {
    id: root

    required property string label
    required property url iconSource
    property bool lit: false
    /// The button is on or off, and `lit` tells which.
    property bool toggles: false

    readonly property color tint: root.lit ? Colors.accent
                                           : root.hovered ? Colors.strong : Colors.icon

    hoverEnabled: true
    implicitHeight: 26
    implicitWidth: 26
    text: root.label

    Accessible.checkable: root.toggles
    Accessible.checked: root.toggles && root.lit
    Accessible.name: root.label
    Accessible.role: Accessible.Button
    Keys.onReturnPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onEnterPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }

    Tip {
        text: root.label
        visible: (root.hovered || root.visualFocus) && !root.pressed
    }

    background: FocusRing {
        active: root.visualFocus
        radius: 8
    }
    contentItem: Item {
        transform: PressStyle {
            held: root.pressed
            label: root.contentItem
        }

        TintedIcon {
            anchors.centerIn: parent
            icon.color: root.tint
            icon.source: root.iconSource
        }
    }
}
