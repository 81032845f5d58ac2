pragma ComponentBehavior: Bound

import QtQuick
import Kestrelbay

/// What explains a setting, on as many lines as it needs.
SpokenCaption {
    color: Colors.secondary
    elide: Text.ElideNone
    lineHeight: 1.15
    maximumLineCount: 100
    size: 11
    wrapMode: Text.Wrap
}
