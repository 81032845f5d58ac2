pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kestrelbay

/// The options that do not concern the data.
SettingsPage {
    id: root

    required property GeneralPage page

    /// The list of languages is open.
    readonly property bool listOpened: languages.opened

    SettingsGroup {
        title: root.page.texts.label("settingsLaunch")
        width: parent.width

        ToggleRow {
            divided: false
            on: root.page.autostart
            text: root.page.texts.label("menuWithWindows")

            onClicked: root.page.autostart = !root.page.autostart
        }
        ToggleRow {
            on: root.page.withClaude
            text: root.page.texts.label("menuWithClaude")

            onClicked: root.page.withClaude = !root.page.withClaude
        }
        ToggleRow {
            on: root.page.withCodex
            text: root.page.texts.label("menuWithCodex")
            visible: root.page.codexInstalled

            onClicked: root.page.withCodex = !root.page.withCodex
        }
        ToggleRow {
            on: root.page.statusLine
            text: root.page.texts.label("menuStatusLine")

            onClicked: root.page.statusLine = !root.page.statusLine
        }
    }
    SettingsGroup {
        title: root.page.texts.label("settingsCard")
        width: parent.width

        SettingsRow {
            divided: false
            label: root.page.texts.label("menuView")

            SegmentedSwitch {
                choices: root.page.viewNames
                current: root.page.view
                label: root.page.texts.label("menuView")

                onChosen: index => root.page.selectView(index)
            }
        }
        ToggleRow {
            divided: false
            on: root.page.topmost
            text: root.page.texts.label("menuTopmost")

            onClicked: root.page.topmost = !root.page.topmost
        }
        SettingsRow {
            label: root.page.texts.label("menuLanguage")

            ChoiceList {
                id: languages

                choices: root.page.languageNames
                current: root.page.language
                label: root.page.texts.label("menuLanguage")

                Layout.preferredWidth: Math.max(150, implicitWidth)
                onChosen: index => root.page.selectLanguage(index)
            }
        }
    }
    SettingsGroup {
        title: root.page.texts.label("settingsAnimations")
        width: parent.width

        ToggleRow {
            divided: false
            on: root.page.animations
            text: root.page.texts.label("settingsAnimations")

            onClicked: root.page.animations = !root.page.animations
        }
        ToggleRow {
            on: root.page.updates
            text: root.page.texts.label("menuUpdates")

            onClicked: root.page.updates = !root.page.updates
        }
        SettingsRow {
            label: ""
            visible: root.page.update

            PushButton {
                text: root.page.update

                onClicked: root.page.getUpdate()
            }
        }
    }
}
