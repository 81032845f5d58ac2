#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace indexer {

/// Runs a program without a shell and gives the beginning of what it printed. Nothing when it
/// cannot be started, fails, or has not ended in time; it is ended then.
[[nodiscard]] std::optional<std::string> programOutput(const std::filesystem::path &program,
    const std::vector<std::string> &arguments, std::chrono::milliseconds patience);

/// The executable file of that name in the first folder of PATH that has one.
[[nodiscard]] std::optional<std::filesystem::path> findProgram(
    std::string_view name, std::string_view path);

} // namespace indexer
