pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// The settings, on two tabs.
Item {
    id: root

    required property GeneralPage generalPage
    required property DataPage dataPage

    property int tab: 0

    readonly property list<string> tabs: [
        root.generalPage.texts.label("settingsGeneral"),
        root.generalPage.texts.label("settingsData")
    ]
    /// Of the shown tab.
    readonly property string title: root.tabs[root.tab]
    /// Something is in front of the tab, and goes first.
    readonly property bool covered: general.listOpened || data.asking

    signal closeRequested

    function turn() {
        root.tab = 1 - root.tab;
        tabs.forceActiveFocus(Qt.ShortcutFocusReason);
    }

    Accessible.name: root.generalPage.texts.label("settingsTitle")
    Accessible.role: Accessible.Pane

    Shortcut {
        enabled: !root.covered
        sequence: "Escape"

        onActivated: root.closeRequested()
    }
    Shortcut {
        sequence: "Ctrl+W"

        onActivated: root.closeRequested()
    }
    Shortcut {
        enabled: !root.covered
        sequences: ["Ctrl+Tab", "Ctrl+Shift+Tab"]

        onActivated: root.turn()
    }
    Rectangle {
        anchors.fill: parent
        color: Qt.alpha(Colors.surface, 1)
    }
    SegmentedSwitch {
        id: tabs

        anchors.horizontalCenter: parent.horizontalCenter
        choices: root.tabs
        current: root.tab
        label: root.generalPage.texts.label("settingsTitle")
        stretch: true
        width: Math.max(200, implicitWidth)
        y: 16

        onChosen: index => root.tab = index
    }
    BusySign {
        anchors.left: tabs.right
        anchors.leftMargin: 12
        anchors.verticalCenter: tabs.verticalCenter
        busy: root.dataPage.sync.busy
    }
    GeneralTab {
        id: general

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: tabs.bottom
        anchors.topMargin: 16
        page: root.generalPage
        visible: root.tab === 0
    }
    DataTab {
        id: data

        anchors.fill: general
        page: root.dataPage
        visible: root.tab === 1
    }
}
