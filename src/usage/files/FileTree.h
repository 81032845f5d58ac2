#pragma once

#include "usage/files/FileIdentity.h"
#include "usage/values/Skips.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace usage {

struct FoundFile {
    std::string path;
    FileIdentity identity;
};

/// All transcripts below a projects folder, in an order that depends on their names only. Links
/// are followed, but each folder and file is taken once. What cannot be read goes into `skips`.
[[nodiscard]] std::vector<FoundFile> findTranscripts(
    const std::filesystem::path &projects, Skips &skips);

/// All rollouts in Codex's folder, compressed ones too, likewise.
[[nodiscard]] std::vector<FoundFile> findRollouts(const std::filesystem::path &codex, Skips &skips);

/// Why a folder inside an assistant's own folder cannot be read, in words. That it is not there yet
/// is no reason; that the assistant's folder itself is missing is none if it `mayBeMissing`.
[[nodiscard]] std::optional<std::string> whyUnreadable(
    const std::filesystem::path &home, std::string_view inner, bool mayBeMissing);

} // namespace usage
