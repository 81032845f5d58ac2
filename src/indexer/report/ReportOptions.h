#pragma once

#include "usage/statistics/StatisticsFilter.h"

namespace indexer {

/// What a row stands for.
enum class ReportKind { Daily, Weekly, Monthly, Sessions };

enum class ReportFormat { Table, Json, Csv };

/// Which report was asked for, of which usage.
struct ReportOptions {
    ReportKind kind = ReportKind::Daily;
    usage::StatisticsFilter filter {};
    ReportFormat format = ReportFormat::Table;
    bool byModel = false; // tokens and cost of each model too
};

} // namespace indexer
