#pragma once

#include <filesystem>
#include <optional>

/// Where our files and the assistants' are. Every program asks here.
namespace Folders {

/// The home folder that the user database names for the effective user: the variable HOME may have
/// been changed, and counts only for a user that the database does not know.
[[nodiscard]] std::filesystem::path home();

/// The data folder, "~/.kestrelbay".
[[nodiscard]] std::filesystem::path data();

/// Claude Code's folder, "~/.claude".
[[nodiscard]] std::filesystem::path claude();
/// The folder that CLAUDE_CONFIG_DIR names, as it stands; nullopt if it is not set.
[[nodiscard]] std::optional<std::filesystem::path> namedClaude();

/// Codex's folder, "~/.codex".
[[nodiscard]] std::filesystem::path codex();
/// The folder that CODEX_HOME names, as it stands; nullopt if it is not set.
[[nodiscard]] std::optional<std::filesystem::path> namedCodex();

} // namespace Folders
