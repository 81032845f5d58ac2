#pragma once

#include "widget/sources/PeriodRows.h"
#include <QMap>

// The statistics file, `stats.json`, field by field as the indexer writes it. An empty optional
// means "not told", which is not the same as 0 or "". Counts are doubles, as all numbers of the
// file.

/// What one span cost, in US dollars.
struct Totals {
    std::optional<double> cost;
    std::optional<TokenSet> tokens;
    std::optional<double> sessions;

    bool operator==(const Totals &) const = default;
};

/// The fixed calendar spans.
struct StatsTotals {
    std::optional<Totals> today;
    std::optional<Totals> yesterday;
    std::optional<Totals> week;
    std::optional<Totals> lastWeek;
    std::optional<Totals> month;
    std::optional<Totals> lastMonth;

    bool operator==(const StatsTotals &) const = default;
};

/// The figures of one provider.
struct ProviderStats {
    std::optional<StatsTotals> totals;

    bool operator==(const ProviderStats &) const = default;
};

/// One recent session.
struct SessionRow {
    std::optional<QString> title;
    std::optional<QString> project;
    std::optional<QString> end; ///< ISO-8601 time stamp
    std::optional<double> cost;
    std::optional<TokenSet> tokens;
    std::optional<QString> provider; ///< "claude" or "codex"
    std::optional<QString> device;   ///< the id of a DeviceRow

    bool operator==(const SessionRow &) const = default;
};

/// One device that shares history through sync.
struct DeviceRow {
    QString id;
    std::optional<QString> name;
    std::optional<bool> enabled;
    std::optional<double> cost;
    std::optional<bool> isSelf; ///< "self" in the file: the device this widget runs on

    bool operator==(const DeviceRow &) const = default;
};

/// The whole file.
struct Stats {
    std::optional<StatsTotals> totals;                     ///< both providers together
    std::optional<QMap<QString, ProviderStats>> providers; ///< by raw name
    std::optional<PeriodRows> days;
    std::optional<PeriodRows> weeks;
    std::optional<PeriodRows> months;
    std::optional<QList<SessionRow>> sessions; ///< not kept beyond the list made of them
    std::optional<QList<DeviceRow>> devices;

    bool operator==(const Stats &) const = default;
};
