pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// A row of choices of which one is taken. It is one stop for the keyboard; arrow keys move the choice.
Item {
    id: root

    required property string label
    required property list<string> choices
    required property int current
    property real segmentPadding: 10
    /// The choices share the whole width, in equal parts.
    property bool stretch: false

    readonly property real border: 2

    signal chosen(int index)

    activeFocusOnTab: true
    implicitHeight: 26
    implicitWidth: segments.implicitWidth + 2 * root.border

    Accessible.focusable: true
    Accessible.name: root.label
    Accessible.role: Accessible.PageTabList
    Keys.onLeftPressed: {
        if (root.current > 0)
            root.chosen(root.current - 1);
    }
    Keys.onRightPressed: {
        if (root.current + 1 < root.choices.length)
            root.chosen(root.current + 1);
    }

    Rectangle {
        anchors.fill: parent
        color: Colors.track
        opacity: 0.62
        radius: 9
    }
    Row {
        id: segments

        x: root.border
        y: root.border

        Repeater {
            model: root.choices

            Segment {
                height: root.height - 2 * root.border
                ringed: root.activeFocus && taken
                sidePadding: root.segmentPadding
                taken: index === root.current
                width: root.stretch ? (root.width - 2 * root.border) / root.choices.length : implicitWidth

                onClicked: root.chosen(index)
            }
        }
    }
}
