#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace usage {

/// Codex's own database of its threads, state_N.sqlite of the highest N in its folder; empty when
/// there is none.
[[nodiscard]] std::filesystem::path findStateDatabase(const std::filesystem::path &codex);

/// Tells one state of it, its journals included, from others; empty when it is not there.
[[nodiscard]] std::string stateOfDatabase(const std::filesystem::path &file);

/// The titles in it by the ids of the threads, on one line each. Nothing when they cannot be read
/// just now. Leaves nothing behind, and waits for nobody.
[[nodiscard]] std::optional<std::map<std::string, std::string>> readStateTitles(
    const std::filesystem::path &file);

} // namespace usage
