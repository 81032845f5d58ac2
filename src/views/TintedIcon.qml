pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// An icon in a colour; only controls can tint one.
ToolButton {
    id: root

    property real size: 14

    background: null
    display: AbstractButton.IconOnly
    enabled: false
    focusPolicy: Qt.NoFocus
    icon.color: Colors.secondary
    icon.height: root.size
    icon.width: root.size
    implicitHeight: root.size
    implicitWidth: root.size
    opacity: 1
    padding: 0

    Accessible.ignored: true
}
