#pragma once

#include "indexer/HistoryFacts.h"
#include "indexer/Terminal.h"

#include <string>

namespace indexer {

/// What is stored, for people.
[[nodiscard]] std::string statusText(
    const HistoryFacts &facts, TimePoint now, const Terminal &terminal);

/// The same as an object: "file", "bytes", "since", "answers", "sessions", "files",
/// "vanishedFiles", "lastRun", "incomplete", and "skipped" with its reasons; what is not known is
/// null.
[[nodiscard]] std::string statusJson(const HistoryFacts &facts);

} // namespace indexer
