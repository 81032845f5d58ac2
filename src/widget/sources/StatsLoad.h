#pragma once

#include "widget/sources/SessionItem.h"
#include "widget/sources/Stats.h"
#include <QByteArray>
#include <variant>

/// A statistics file as the model takes it.
struct ParsedStats {
    Stats stats; ///< all but its sessions
    QList<SessionItem> sessions;

    bool operator==(const ParsedStats &) const = default;
};

/// Why a statistics file could not be loaded.
struct StatsFailure {
    QString why;

    bool operator==(const StatsFailure &) const = default;
};

/// The outcome of one load: loaded or failed.
using StatsLoad = std::variant<ParsedStats, StatsFailure>;

/// The outcome for a file of these bytes, without a byte-order mark.
[[nodiscard]] StatsLoad loadStats(const QByteArray &bytes);

/// Reads and decodes Paths::stats(), unless it is larger than any history. Blocks on file input; to
/// be called off the main thread.
[[nodiscard]] StatsLoad loadStatsFile();
