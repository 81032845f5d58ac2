#include "usage/history/tables/RolloutTable.h"

#include "usage/codex/RolloutPacking.h"
#include "usage/history/tables/SealedTables.h"

#include <fmt/format.h>
#include <map>

namespace usage {

RolloutTable::RolloutTable(Database &database)
    : m_database(database)
    , m_told(database,
          fmt::format("SELECT told, {} FROM rollout WHERE file = ?", isSealed(rolloutTable)))
    , m_kin(database, "SELECT 1 FROM kin WHERE file = ?")
{
}

std::string RolloutTable::told(std::int64_t file)
{
    m_told.bind(file);
    std::string bytes;
    while (m_told.next()) {
        bytes = m_told.bytes(0);
        if (m_told.number(1) == 0) {
            m_database.setDamaged();
        }
    }
    return bytes;
}

RolloutTable::Files RolloutTable::familyOf(
    const Files &files, const std::vector<std::string> &threads) const
{
    Statement ofThread(m_database, "SELECT file FROM kin WHERE thread = ?");
    Statement relatives(m_database,
        "SELECT DISTINCT other.file FROM kin JOIN kin AS other USING (thread) WHERE kin.file = ?");
    std::vector<std::int64_t> waiting(files.begin(), files.end());
    for (const std::string &thread : threads) {
        ofThread.bind(std::string_view(thread));
        while (ofThread.next()) {
            waiting.push_back(ofThread.number(0));
        }
    }
    Files family;
    while (!waiting.empty()) {
        const std::int64_t file = waiting.back();
        waiting.pop_back();
        if (!family.insert(file).second) {
            continue;
        }
        relatives.bind(file);
        while (relatives.next()) {
            waiting.push_back(relatives.number(0));
        }
    }
    return family;
}

std::vector<RolloutTable::Files> RolloutTable::families() const
{
    std::map<std::int64_t, std::int64_t> leaders; // of the files, by way of others
    const auto leaderOf = [&leaders](std::int64_t file) {
        auto at = leaders.try_emplace(file, file).first;
        while (at->second != at->first) {
            at->second = leaders.at(at->second);
            at = leaders.find(at->second);
        }
        return at->first;
    };
    Statement rows(m_database, "SELECT thread, file FROM kin ORDER BY thread");
    std::string thread;
    std::int64_t first = 0;
    while (rows.next()) {
        const std::int64_t file = rows.number(1);
        if (first == 0 || rows.bytes(0) != thread) {
            thread = rows.bytes(0);
            first = file;
        }
        leaders[leaderOf(file)] = leaderOf(first);
    }
    std::map<std::int64_t, Files> families;
    for (const auto &[file, leader] : leaders) {
        families[leaderOf(file)].insert(file);
    }
    std::vector<Files> result;
    result.reserve(families.size());
    for (auto &[leader, files] : families) {
        result.push_back(std::move(files));
    }
    return result;
}

RolloutBook RolloutTable::book(const Files &files)
{
    RolloutBook book;
    for (const std::int64_t file : files) {
        const std::string bytes = told(file);
        if (auto rollout = unpackedRollout(bytes)) {
            book.add(std::move(*rollout));
        } else if (!bytes.empty() || hasKin(file)) {
            m_database.setDamaged();
        }
    }
    return book;
}

/// As each file has that told anything yet.
bool RolloutTable::hasKin(std::int64_t file)
{
    m_kin.bind(file);
    bool hasAny = false;
    while (m_kin.next()) {
        hasAny = true;
    }
    return hasAny;
}

void RolloutTable::put(const KeptRollout &rollout)
{
    const auto &[file, bytes, threads] = rollout;
    Statement replacement(m_database, replacementIn(rolloutTable));
    replacement.bind(file, std::string_view(bytes)).run();
    Statement removal(m_database, "DELETE FROM kin WHERE file = ?");
    removal.bind(file).run();
    Statement insertion(m_database, replacementIn(kinTable));
    for (const std::string &thread : threads) {
        insertion.bind(std::string_view(thread), file).run();
    }
}

void RolloutTable::put(std::int64_t file, const Rollout &rollout)
{
    put({file, packed(rollout), kinOf(rollout)});
}

void RolloutTable::remove(std::int64_t file)
{
    for (const char *sql :
        {"DELETE FROM rollout WHERE file = ?", "DELETE FROM kin WHERE file = ?"}) {
        Statement removal(m_database, sql);
        removal.bind(file).run();
    }
}

} // namespace usage
