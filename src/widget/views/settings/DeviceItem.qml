pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// A linked device. Of all of them only the current one's controls are on the keyboard's way.
FocusScope {
    id: root

    required property int index
    required property string deviceId
    required property string title
    required property string detail
    required property bool included
    required property string unlinkText
    required property bool current

    // What has the keyboard must not be off its way.
    readonly property bool reachable: root.current || root.activeFocus

    signal includeRequested(bool on)
    signal unlinkRequested

    Accessible.name: root.title
    Accessible.role: Accessible.ListItem

    Divider {
        visible: root.index > 0
        width: root.width - 28
        x: 14
    }
    TickBox {
        about: root.detail
        focus: true
        focusPolicy: root.reachable ? Qt.TabFocus : Qt.NoFocus
        height: root.height
        text: root.title
        ticked: root.included
        width: unlink.x

        onClicked: root.includeRequested(!root.included)
    }
    PushButton {
        id: unlink

        about: root.title
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        focusPolicy: root.reachable ? Qt.TabFocus : Qt.NoFocus
        text: root.unlinkText

        onClicked: root.unlinkRequested()
    }
}
