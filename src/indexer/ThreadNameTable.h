#pragma once

#include "indexer/Database.h"
#include "indexer/Skips.h"

#include <filesystem>
#include <map>
#include <string>

namespace indexer {

/// The names that the user gave to Codex's threads, by their ids.
[[nodiscard]] std::map<std::string, std::string, std::less<>> threadNames(Database &database);

/// Reads them from Codex's folder when the file there has changed; true when it has. Names stay
/// when the file is gone.
[[nodiscard]] bool updateThreadNames(
    Database &database, const std::filesystem::path &codex, Skips &skips);

} // namespace indexer
