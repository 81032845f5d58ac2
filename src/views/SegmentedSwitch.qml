pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// A row of choices of which one is taken. It is one stop for the keyboard; arrow keys move the choice.
Control {
    id: root

    required property string label
    required property list<string> choices
    required property int current
    property real segmentPadding: 10

    signal chosen(int index)

    focusPolicy: Qt.TabFocus
    implicitHeight: 26
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    padding: 2

    Accessible.name: root.label
    Accessible.role: Accessible.PageTabList
    Keys.onLeftPressed: root.chosen(Math.max(root.current - 1, 0))
    Keys.onRightPressed: root.chosen(Math.min(root.current + 1, root.choices.length - 1))

    background: Rectangle {
        color: Colors.track
        opacity: 0.62
        radius: 9
    }
    contentItem: Row {
        Repeater {
            model: root.choices

            Segment {
                height: root.availableHeight
                ringed: root.visualFocus && taken
                sidePadding: root.segmentPadding
                taken: index === root.current

                onClicked: root.chosen(index)
            }
        }
    }
}
