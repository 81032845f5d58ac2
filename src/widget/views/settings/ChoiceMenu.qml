pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// The choices of a ChoiceList, to be gone through with arrow keys.
ListView {
    id: root

    required property string label
    required property list<string> choices
    required property int current

    signal chosen(int index)

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    focus: true
    highlightMoveDuration: 0
    implicitHeight: Math.min(root.contentHeight, 260)
    model: root.choices

    Accessible.name: root.label
    Accessible.role: Accessible.List
    Keys.onEnterPressed: root.chosen(root.currentIndex)
    Keys.onReturnPressed: root.chosen(root.currentIndex)
    Keys.onSpacePressed: root.chosen(root.currentIndex)
    Keys.onPressed: event => {
        const last = event.key === Qt.Key_End;
        event.accepted = last || event.key === Qt.Key_Home;
        if (event.accepted)
            root.currentIndex = last ? root.count - 1 : 0;
    }
    ScrollBar.vertical: ScrollSign {
    }
    onVisibleChanged: {
        if (root.visible)
            root.currentIndex = root.current;
    }

    delegate: ChoiceItem {
        id: choice

        lit: ListView.isCurrentItem
        taken: choice.index === root.current
        width: root.width

        onClicked: root.chosen(choice.index)
        onHoveredChanged: {
            if (choice.hovered)
                root.currentIndex = choice.index;
        }
    }
}
