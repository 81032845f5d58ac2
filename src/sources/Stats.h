#pragma once

#include <optional>
#include <QList>
#include <QMap>
#include <QString>

// The statistics file, `stats.json`, field by field as the indexer writes it. An empty optional
// means "not told", which is not the same as 0 or "". Counts are doubles, as all numbers of the
// file.

/// Token counts of some span. Cache reads are part of `total` only.
struct TokenSet {
    std::optional<double> input;
    std::optional<double> output;
    std::optional<double> cacheWrite;
    std::optional<double> total;

    /// The tokens that count as spent: input, output and cache writes; the total only when those
    /// three give nothing.
    [[nodiscard]] double spent() const
    {
        const double parts = input.value_or(0) + output.value_or(0) + cacheWrite.value_or(0);
        return parts > 0 ? parts : total.value_or(0);
    }

    bool operator==(const TokenSet &) const = default;
};

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

/// One bar of the history: a day has `date`, a week `start` (its first day), a month `month`.
struct PeriodRow {
    std::optional<QString> date;
    std::optional<QString> start;
    std::optional<QString> month;
    std::optional<double> cost;
    std::optional<TokenSet> tokens;
    std::optional<bool> estimated;
    std::optional<QMap<QString, double>> models; ///< model id → cost

    bool operator==(const PeriodRow &) const = default;
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
    std::optional<QList<PeriodRow>> days;
    std::optional<QList<PeriodRow>> weeks;
    std::optional<QList<PeriodRow>> months;
    std::optional<QList<SessionRow>> sessions;
    std::optional<QList<DeviceRow>> devices;

    bool operator==(const Stats &) const = default;
};
