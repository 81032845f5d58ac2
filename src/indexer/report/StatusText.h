#pragma once

#include "indexer/terminal/Terminal.h"
#include "usage/history/HistorySummary.h"

#include <string>

namespace indexer {

/// What is stored, for people.
[[nodiscard]] std::string statusText(
    const usage::HistorySummary &facts, TimePoint now, const Terminal &terminal);

/// The same as an object: "file", "bytes", "since", "answers", "sessions", "files",
/// "vanishedFiles", "lastRun", "incomplete", and "skipped" with its reasons; what is not known is
/// null.
[[nodiscard]] std::string statusJson(const usage::HistorySummary &facts);

} // namespace indexer
