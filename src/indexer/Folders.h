#pragma once

#include <filesystem>

namespace indexer {

/// Where the program's own files are unless told otherwise.
[[nodiscard]] std::filesystem::path defaultDataFolder();

/// Where Claude Code keeps its files unless told otherwise.
[[nodiscard]] std::filesystem::path defaultClaudeFolder();

} // namespace indexer
