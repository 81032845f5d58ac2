pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// Text in the panel's typeface: plain, on one line, cut with an ellipsis where it is too long.
Text {
    id: root

    /// In points, for a system font of ordinary size.
    property real size: 12

    color: Colors.primary
    elide: Text.ElideRight
    font.pixelSize: Math.round(root.size * Metrics.textScale)
    horizontalAlignment: Text.AlignLeft
    maximumLineCount: 1
    textFormat: Text.PlainText
}
