#pragma once

#include "usage/history/tables/Database.h"

#include <array>
#include <string>
#include <string_view>

namespace usage {

/// A table each of whose rows ends with a `seal`, a hash of its other columns.
struct SealedTable {
    std::string_view name;
    std::string_view columns; // all others, the key first
};

inline constexpr SealedTable textTable {"text", "id, text"};
inline constexpr SealedTable fileTable {"file",
    "id, provider, path, device, inode, size, modified, place, guard, again, gone, rules, skips"};
inline constexpr SealedTable summaryTable {"summary", "leaf, file, title"};
inline constexpr SealedTable rolloutTable {"rollout", "file, told"};
inline constexpr SealedTable kinTable {"kin", "thread, file"};
inline constexpr SealedTable threadNameTable {"thread_name", "thread, name"};
inline constexpr SealedTable threadTitleTable {"thread_title", "thread, title"};
inline constexpr SealedTable factTable {"fact", "name, value"};
inline constexpr SealedTable sessionTable {
    "session", "provider, session, title, folder, end, prompt"};

/// The expression that is true of a row that is as it was written.
[[nodiscard]] std::string isSealed(const SealedTable &table);
/// A statement that puts a row into a table, in the place of one with the same key. Its parameters
/// are the values of the columns.
[[nodiscard]] std::string replacementIn(const SealedTable &table);
/// A statement that seals the rows of a table anew which a condition holds for.
[[nodiscard]] std::string resealing(const SealedTable &table, std::string_view condition);

/// What is wrong with a history.
enum class Damage {
    None,
    Made, // only in what can be made anew from the rest
    Whole // also in the rest, or the file is no sound database
};

/// Has a database count as damaged when the pages of a table do not hang together.
void checkStructure(Database &database, std::string_view table);
/// Looks at all that statistics are made of, besides the texts, whose reader looks himself.
[[nodiscard]] Damage damageOfStatistics(Database &database);
struct DamageFound {
    Damage damage = Damage::None;
    std::string words;
};
/// Looks at everything, as far as its version lets it.
[[nodiscard]] DamageFound damageOf(Database &database);

} // namespace usage
