#pragma once

#include "usage/history/tables/Database.h"
#include "usage/values/Skips.h"

#include <filesystem>
#include <map>
#include <string>

namespace usage {

/// The names that the user gave to Codex's threads, by their ids.
[[nodiscard]] std::map<std::string, std::string, std::less<>> threadNames(Database &database);

/// Reads them from Codex's folder when the file there has changed. Names stay when it is gone; that
/// it cannot be read goes into the skips.
void updateThreadNames(Database &database, const std::filesystem::path &codex, Skips &skips);

/// The titles that Codex's own database gave them, the first prompt most often.
[[nodiscard]] std::map<std::string, std::string, std::less<>> threadTitles(Database &database);

/// Reads them when that has changed. Titles stay when it is gone, or cannot be read just now.
void updateThreadTitles(Database &database, const std::filesystem::path &codex);

} // namespace usage
