#pragma once

#include "indexer/Statistics.h"

#include <string>

namespace indexer {

enum class ReportKind { Daily, Weekly, Monthly, Sessions };

/// A table for the terminal: periods oldest first and only those with usage, sessions newest first.
[[nodiscard]] std::string reportTable(const Statistics &statistics, ReportKind kind);

/// The same rows for other programs.
[[nodiscard]] std::string reportJson(const Statistics &statistics, ReportKind kind);

} // namespace indexer
