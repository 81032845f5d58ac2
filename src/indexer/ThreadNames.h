#pragma once

#include "indexer/Moment.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace indexer {

/// A name that the user gave to a thread of Codex; empty when it was taken back.
struct ThreadName {
    std::string thread; // its id
    std::string name;
    TimePoint time = TimePoint::min();
};

/// Reads session_index.jsonl in Codex's folder: the newest name of each thread. Nothing when it
/// cannot be read.
[[nodiscard]] std::optional<std::vector<ThreadName>> readThreadNames(
    const std::filesystem::path &file);

} // namespace indexer
