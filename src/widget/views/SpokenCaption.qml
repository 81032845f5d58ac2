pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// A text that a screen reader finds by itself; others are part of what is around them.
Caption {
    Accessible.name: text
    Accessible.role: Accessible.StaticText
}
