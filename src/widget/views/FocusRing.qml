pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Shows which control the keyboard works on.
Rectangle {
    id: root

    required property bool active

    border.color: Colors.accent
    border.width: 2
    color: "transparent"
    visible: root.active
}
