#pragma once

#include "indexer/report/ReportOptions.h"
#include "indexer/terminal/Terminal.h"
#include "usage/statistics/Statistics.h"

#include <string>

namespace indexer {

// The statistics hold the usage that the options admit; nothing is filtered here. Periods come
// oldest first and only those with usage, sessions newest first.

/// The report in the form that was asked for.
[[nodiscard]] std::string reportText(
    const usage::Statistics &statistics, const ReportOptions &options, const Terminal &terminal);

/// A table for people, with the sums below.
[[nodiscard]] std::string reportTable(
    const usage::Statistics &statistics, const ReportOptions &options, const Terminal &terminal);

/// An array of rows. Of "models", each is its cost alone or, where models were asked for, an object
/// with its tokens, its cost and the reason why that is an estimate; a cost that is not known is
/// null, and so is the reason where there is none.
[[nodiscard]] std::string reportJson(
    const usage::Statistics &statistics, const ReportOptions &options);

/// A line of names and a line for each row or, where models were asked for, for each model of each
/// row, as RFC 4180 has it. A cost that is not known is empty. No text is one that a spreadsheet
/// would calculate.
[[nodiscard]] std::string reportCsv(
    const usage::Statistics &statistics, const ReportOptions &options);

} // namespace indexer
