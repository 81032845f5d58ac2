pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// A hairline between two cards.
Rectangle {
    color: Colors.track
    implicitHeight: 1
    opacity: 0.7
}
