pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay
import QtQuick.Controls.Basic

/// A row of choices of which one is taken; arrow keys move the choice.
FocusScope {
    id: root

    required property string label
    required property list<string> choices
    required property int current
    property real segmentPadding: 10

    signal chosen(int index)

    implicitHeight: 26
    implicitWidth: row.implicitWidth + 4

    Accessible.name: root.label
    Accessible.role: Accessible.PageTabList

    Rectangle {
        anchors.fill: parent
        color: Colors.track
        opacity: 0.62
        radius: 9
    }
    Row {
        id: row

        anchors.fill: parent
        anchors.margins: 2

        Repeater {
            model: root.choices

            AbstractButton {
                id: segment

                required property int index
                required property string modelData
                readonly property bool taken: segment.index === root.current

                activeFocusOnTab: segment.taken
                focus: segment.taken
                height: row.height
                hoverEnabled: true
                implicitWidth: segment.implicitContentWidth + 2 * root.segmentPadding
                text: segment.modelData

                Accessible.name: segment.modelData
                Accessible.role: Accessible.PageTab
                Accessible.checkable: true
                Accessible.checked: segment.taken
                Keys.onLeftPressed: root.chosen(Math.max(segment.index - 1, 0))
                Keys.onRightPressed: root.chosen(Math.min(segment.index + 1, root.choices.length - 1))
                onClicked: root.chosen(segment.index)
                onTakenChanged: if (segment.taken && root.activeFocus) segment.forceActiveFocus(Qt.TabFocusReason)

                background: Rectangle {
                    color: Qt.rgba(1, 1, 1, 0.23)
                    opacity: segment.taken ? 1 : 0
                    radius: 7

                    Behavior on opacity {
                        NumberAnimation {
                            duration: Motion.tab
                            easing.type: Easing.OutCubic
                        }
                    }
                }
                contentItem: Caption {
                    color: segment.taken ? Colors.primary
                                         : segment.hovered ? Colors.strong : Colors.secondary
                    font.weight: segment.taken ? Font.DemiBold : Font.Normal
                    horizontalAlignment: Text.AlignHCenter
                    text: segment.modelData
                    verticalAlignment: Text.AlignVCenter

                    Accessible.ignored: true
                }

                FocusRing {
                    active: segment.visualFocus
                    anchors.fill: parent
                    radius: 7
                }
            }
        }
    }
}
