pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// An icon in a colour.
IconShape {
    id: root

    property real size: 14

    color: Colors.secondary
    implicitHeight: root.size
    implicitWidth: root.size
}
