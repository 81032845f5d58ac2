pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay
import QtQuick.Controls.Basic

/// What all that is pressed in the settings has in common. Only the keyboard's way leads the
/// keyboard to it, so whoever clicks it goes on typing in his field.
AbstractButton {
    id: root

    /// What it is about, where its text alone does not tell.
    property string about
    /// What it is to a screen reader.
    property int kind: Accessible.Button

    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    implicitHeight: root.implicitContentHeight + root.topPadding + root.bottomPadding
    implicitWidth: root.implicitContentWidth + root.leftPadding + root.rightPadding
    opacity: root.enabled ? 1 : 0.5

    Accessible.description: root.about
    Accessible.name: root.text
    Accessible.onPressAction: root.clicked()
    Component.onCompleted: root.Accessible.role = root.kind // here, or the control has it a button
    Keys.onReturnPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onEnterPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }

    Behavior on opacity {
        NumberAnimation {
            duration: Motion.hover
        }
    }
}
