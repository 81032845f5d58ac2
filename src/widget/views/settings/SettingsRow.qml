pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// A row of a group: what it sets, and the controls that set it.
Item {
    id: root

    /// Empty where the controls speak for themselves.
    required property string label
    /// Parted from the row above by a line.
    property bool divided: true
    default property alias controls: line.data

    implicitHeight: Math.max(root.divided ? 42 : 40, line.implicitHeight + 12)
    width: parent.width // a group's column

    Divider {
        visible: root.divided
        width: root.width - 28
        x: 14
    }
    RowLayout {
        id: line

        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
        width: root.width - 28
        x: 14

        SpokenCaption {
            maximumLineCount: 2
            size: 13
            text: root.label
            visible: root.label
            wrapMode: Text.Wrap

            Layout.fillWidth: true
            Layout.minimumWidth: Math.min(implicitWidth, 80)
        }
    }
}
