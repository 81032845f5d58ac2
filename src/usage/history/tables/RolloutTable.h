#pragma once

#include "usage/codex/RolloutBook.h"
#include "usage/history/tables/Database.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace usage {

/// A rollout as it is kept: its file, the bytes that it is packed into, and the threads that it has
/// to do with.
struct KeptRollout {
    std::int64_t file = 0;
    std::string bytes;
    std::vector<std::string> threads;
};

/// What each of Codex's files tells, and which of them have to be looked at together.
class RolloutTable final {
public:
    using Files = std::set<std::int64_t>;

    explicit RolloutTable(Database &database);

    /// What was kept of a file, empty when nothing was.
    [[nodiscard]] std::string told(std::int64_t file);
    /// All files of the families that some files or threads belong to.
    [[nodiscard]] Files familyOf(const Files &files, const std::vector<std::string> &threads) const;
    /// All files, family by family.
    [[nodiscard]] std::vector<Files> families() const;
    [[nodiscard]] RolloutBook book(const Files &files);

    void put(const KeptRollout &rollout);
    void put(std::int64_t file, const Rollout &rollout);
    void remove(std::int64_t file);

private:
    [[nodiscard]] bool hasKin(std::int64_t file);

    Database &m_database;
    Statement m_told;
    Statement m_kin;
};

} // namespace usage
