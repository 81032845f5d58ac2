pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Kestrelbay

/// A field for a line of text.
TextField {
    id: root

    required property string label
    /// It shows dots, and no keyboard learns from it.
    property bool secret: false
    /// What it is about, where its label alone does not tell.
    property string about

    bottomPadding: 5
    color: Colors.primary
    echoMode: root.secret ? TextInput.Password : TextInput.Normal
    font.pixelSize: Math.round(12 * Metrics.textScale)
    implicitHeight: Math.max(28, root.contentHeight + 10)
    inputMethodHints: root.secret ? Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
                                    | Qt.ImhHiddenText : Qt.ImhNone
    leftPadding: 8
    opacity: root.enabled ? 1 : 0.5
    placeholderTextColor: Colors.tertiary
    rightPadding: 8
    selectByMouse: true
    selectedTextColor: Colors.primary
    selectionColor: Colors.accent
    topPadding: 5
    verticalAlignment: TextInput.AlignVCenter

    Accessible.name: root.label
    // Here, or the placeholder takes its place, as it does where there are dots.
    Component.onCompleted: root.Accessible.description = Qt.binding(() => root.about)

    background: Rectangle {
        border.color: Colors.track
        border.width: 1
        color: Qt.alpha(Colors.track, 0.07)
        radius: 7

        FocusRing {
            active: root.activeFocus
            anchors.fill: parent
            radius: 7
        }
    }
    Behavior on opacity {
        NumberAnimation {
            duration: Motion.hover
        }
    }
}
