pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// A narrow scroll bar, to be seen whenever there is more than fits.
ScrollBar {
    id: root

    padding: 2
    policy: root.size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff

    contentItem: Rectangle {
        color: root.pressed || root.hovered ? Colors.tertiary : Colors.chosen
        implicitHeight: 20
        implicitWidth: 4
        radius: 2
    }
}
