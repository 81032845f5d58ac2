#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace usage {

/// A file's bytes, or why there are none.
struct FileContent {
    std::optional<std::string> bytes;
    bool isMissing = false;
    std::string problem;
};

/// Reads a whole regular file that is not larger than a limit.
[[nodiscard]] FileContent readFile(const std::filesystem::path &file, std::size_t limit);

/// Creates a folder, and those above it, for the user alone; says what went wrong, if anything.
[[nodiscard]] std::optional<std::string> makeFolder(const std::filesystem::path &folder);

/// Replaces a file's content in one step, readable for the user alone. A link stays one to its
/// file, and what is no file, such as a device, is left alone. A file that holds the same bytes
/// already is not touched; after a failure the old one stands as it was and nothing else is left
/// behind, not even by runs that were killed an hour ago. Says what went wrong, if anything.
[[nodiscard]] std::optional<std::string> replaceFile(
    const std::filesystem::path &name, std::string_view bytes);

} // namespace usage
