pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// One choice of a ChoiceList, which has the keyboard for all of them.
Pressable {
    id: root

    required property int index
    required property string modelData
    required property bool lit
    required property bool taken

    focusPolicy: Qt.NoFocus
    implicitHeight: Math.max(26, root.implicitContentHeight + 8)
    kind: Accessible.ListItem
    leftPadding: 24
    rightPadding: 6
    text: root.modelData

    Accessible.selectable: true
    Accessible.selected: root.taken

    TintedIcon {
        anchors.verticalCenter: parent.verticalCenter
        color: Colors.primary
        name: "check"
        size: 12
        visible: root.taken
        x: 6
    }

    background: Rectangle {
        color: Colors.accent
        radius: 6
        visible: root.lit
    }
    contentItem: Caption {
        text: root.text
        verticalAlignment: Text.AlignVCenter
    }
}
