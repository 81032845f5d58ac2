#pragma once

#include "formats/TimePoint.h"
#include "widget/model/HistoryTab.h"
#include "widget/model/ViewMode.h"
#include "widget/sources/Provider.h"
#include <optional>
#include <QString>

/// Where the free panel's top-left corner is: points from the left and the top of the first screen.
struct WindowSpot {
    double left = 0;
    double top = 0;

    bool operator==(const WindowSpot &) const = default;
};

/// What outlives the process, as at the first start.
struct PersistedState {
    ViewMode view = ViewMode::Icon;
    bool topmost = true; ///< the free panel floats above other windows
    bool hidden = false; ///< the user has hidden the widget
    bool expanded = false;
    bool animations = true;
    bool updateCheck = true;
    HistoryTab tab = HistoryTab::Days;
    Provider provider = Provider::Claude;
    bool notch = false;
    bool launchWithClaude = false; ///< for the companion scripts
    bool launchWithCodex = false;
    bool statusLine = false; ///< for the companion scripts
    QString language;        ///< that the user chose; empty follows the system
    QString uiLanguage;      ///< in use; for other readers of the file
    std::optional<WindowSpot> windowSpot;
    std::optional<TimePoint> updateCheckedAt; ///< last successful update check
    std::optional<QString> latestVersion;     ///< that it told of

    bool operator==(const PersistedState &) const = default;
};
