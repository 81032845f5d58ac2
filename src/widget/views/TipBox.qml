pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestrelbay

/// The box of a tip, which hangs above the item that it is about.
T.ToolTip {
    id: root

    required property Tip host

    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
    delay: 600
    implicitHeight: root.contentHeight + root.topPadding + root.bottomPadding
    implicitWidth: root.contentWidth + root.leftPadding + root.rightPadding
    margins: 6
    padding: 6
    parent: root.host.parent
    text: root.host.text
    visible: root.host.wanted
    x: (root.parent.width - root.implicitWidth) / 2
    y: -root.implicitHeight - 3

    background: Rectangle {
        border.color: Colors.track
        border.width: 1
        color: Qt.alpha(Qt.lighter(Colors.surface, 1.6), 1)
        radius: 7
    }
    contentItem: Caption {
        size: 11
        text: root.text
    }
    enter: Transition {
        NumberAnimation {
            duration: Motion.tip
            easing.type: Easing.OutCubic
            from: 0
            property: "opacity"
            to: 1
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: Motion.tip
            easing.type: Easing.OutCubic
            property: "opacity"
            to: 0
        }
    }
}
