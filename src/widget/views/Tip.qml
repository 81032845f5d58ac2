pragma ComponentBehavior: Bound

import QtQuick

/// What a control is called, beside it after a moment. Most are never looked at, so each is made when
/// it first is.
Loader {
    id: root

    required property string text
    required property bool wanted

    onWantedChanged: {
        if (root.wanted && root.status === Loader.Null)
            root.setSource("TipBox.qml", {
                host: root
            });
    }
}
