#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace usage {

/// Copies a history, the newest answers included, into one file for the user alone, whether or not
/// others are at work on it; a file of that name is replaced in one step. Says what went wrong, if
/// anything. A damaged history is copied too, but never in the place of another file.
[[nodiscard]] std::optional<std::string> backUp(
    const std::filesystem::path &history, const std::filesystem::path &file);

} // namespace usage
