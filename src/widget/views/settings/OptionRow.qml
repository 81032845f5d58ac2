pragma ComponentBehavior: Bound

import Kestrelbay

/// The switch of one general option.
ToggleRow {
    id: root

    required property GeneralPage page
    /// One of GeneralSettings.Option.
    required property int option

    on: root.page.values[root.option]
    text: root.page.titles[root.option]

    onClicked: root.page.flip(root.option)
}
