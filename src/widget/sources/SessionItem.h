#pragma once

#include "formats/TimePoint.h"
#include "widget/sources/Stats.h"

/// One row of the session list, ready for the model: nothing is optional but the end.
struct SessionItem {
    qint64 id = 0; ///< position in the file's list
    QString title;
    QString project;
    std::optional<TimePoint> end; ///< nothing when the file's text is missing or no time stamp
    double cost = 0;              ///< US dollars
    double spent = 0;             ///< tokens
    QString provider;             ///< raw name
    QString device;               ///< display name, empty when not known

    bool operator==(const SessionItem &) const = default;
};

/// The session list of a statistics file, in the file's order.
[[nodiscard]] QList<SessionItem> sessionItems(const Stats &stats);
