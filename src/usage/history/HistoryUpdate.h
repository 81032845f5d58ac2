#pragma once

#include "usage/history/ReadPlan.h"
#include "usage/history/tables/FileTable.h"
#include "usage/history/tables/NoteTable.h"
#include "usage/history/tables/RolloutTable.h"
#include "usage/pricing/PriceTable.h"
#include "usage/reading/ParallelReader.h"

#include <filesystem>

namespace usage {

/// The assistants' folders.
struct SourceFolders {
    std::filesystem::path claude;
    std::filesystem::path codex;
};

/// Brings a history up to date with the files that there are. Each transaction leaves it sound, so
/// that a run may end at any moment and the next one goes on where it stopped.
class HistoryUpdate final {
public:
    HistoryUpdate(Database &database, const PriceTable &prices, TimePoint now);

    /// What was left out this time.
    [[nodiscard]] const Skips &skips() const { return m_skips; }
    /// How many files there are.
    [[nodiscard]] std::size_t files() const { return m_files; }

    /// What goes wrong is the database's problem.
    void run(const SourceFolders &folders, const ProgressTold &progress);
    /// Makes all sums anew from what is stored.
    void renewSums();

private:
    [[nodiscard]] std::vector<FoundFiles> find(const SourceFolders &folders);
    [[nodiscard]] std::vector<FileTask> tasks(const ReadPlan &plan);
    [[nodiscard]] std::string sumsVersion() const;
    void noteMoves(const ReadPlan &plan);

    Database &m_database;
    const PriceTable &m_prices;
    TimePoint m_now;
    NoteTable m_facts;
    FileTable m_fileTable;
    RolloutTable m_rollouts;
    Skips m_skips;
    std::size_t m_files = 0;
};

} // namespace usage
