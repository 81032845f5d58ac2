#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace usage {

/// A name that the user gave to a thread of Codex; empty when it was taken back.
struct ThreadName {
    std::string thread; // its id
    std::string name;
};

/// Reads session_index.jsonl in Codex's folder, line by line, and tells each name that is newer
/// than those told before of its thread. False when the file cannot be read to its end.
[[nodiscard]] bool readThreadNames(
    const std::filesystem::path &file, const std::function<void(const ThreadName &)> &told);

} // namespace usage
