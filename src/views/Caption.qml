pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Text in the panel's typeface: plain, on one line, cut with an ellipsis where it is too long.
Text {
    color: Colors.primary
    elide: Text.ElideRight
    font.pixelSize: 12
    horizontalAlignment: Text.AlignLeft
    maximumLineCount: 1
    textFormat: Text.PlainText

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
