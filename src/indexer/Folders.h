#pragma once

#include <filesystem>
#include <optional>

namespace indexer {

/// Where the program's own files are unless told otherwise.
[[nodiscard]] std::filesystem::path defaultDataFolder();

/// Where Claude Code keeps its files unless told otherwise.
[[nodiscard]] std::filesystem::path defaultClaudeFolder();

/// Where the environment says that they are, if it does.
[[nodiscard]] std::optional<std::filesystem::path> configuredClaudeFolder();

/// The same of Codex.
[[nodiscard]] std::filesystem::path defaultCodexFolder();
[[nodiscard]] std::optional<std::filesystem::path> configuredCodexFolder();

} // namespace indexer
