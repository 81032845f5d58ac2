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

        OptionRow {
            divided: false
            option: GeneralSettings.Autostart
            page: root.page
        }
        OptionRow {
            option: GeneralSettings.WithClaude
            page: root.page
        }
        OptionRow {
            option: GeneralSettings.WithCodex
            page: root.page
            visible: root.page.codexInstalled
        }
        OptionRow {
            option: GeneralSettings.StatusLine
            page: root.page
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
        OptionRow {
            divided: false
            option: GeneralSettings.Topmost
            page: root.page
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

        OptionRow {
            divided: false
            option: GeneralSettings.Animations
            page: root.page
        }
        OptionRow {
            option: GeneralSettings.Updates
            page: root.page
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
