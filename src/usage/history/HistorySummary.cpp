#include "usage/history/HistorySummary.h"

#include "usage/history/tables/FileTable.h"
#include "usage/history/tables/HistorySchema.h"
#include "usage/history/tables/NoteTable.h"
#include "usage/history/tables/SealedTables.h"
#include "usage/history/tables/SpentTable.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>
#include <utility>

namespace usage {

namespace {

std::uint64_t sizeOf(const std::filesystem::path &file)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

std::optional<TimePoint> timeOfStamp(std::int64_t stamp)
{
    return stamp == 0 ? std::nullopt : std::optional(TimePoint(TimePoint::duration(stamp)));
}

/// Why a sound database of another version, or of another program, tells nothing here.
std::optional<std::string> versionProblem(Database &database)
{
    if (isSchemaUpToDate(database) || database.problem()) {
        return std::nullopt;
    }
    const std::string problem = schemaProblem(database);
    return problem.empty() ? "an earlier version wrote it; the next run brings it up to date"
                           : problem;
}

} // namespace

HistorySummary readHistorySummary(const std::filesystem::path &file)
{
    HistorySummary facts {.file = file};
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        return facts;
    }
    Database database(file, Database::ForReading {});
    if (const auto problem = versionProblem(database)) {
        facts.problem = fmt::format("cannot read {}: {}", file.native(), *problem);
        return facts;
    }
    std::set<std::pair<Provider, TextId>> sessions;
    SpentTable(database).visitAll([&](const SumKey &key, const Sum &sum) {
        facts.since = std::min(facts.since.value_or(key.day), key.day);
        facts.answers += sum.answers;
        sessions.emplace(key.provider, key.session);
    });
    facts.sessions = sessions.size();
    facts.files = static_cast<std::uint64_t>(database.number("SELECT count(*) FROM file"));
    facts.vanishedFiles =
        static_cast<std::uint64_t>(database.number("SELECT count(*) FROM file WHERE gone"));
    facts.newestAnswer = timeOfStamp(database.number("SELECT max(end) FROM session"));
    facts.lastRun = timeOfStamp(
        database.number(fmt::format("SELECT value FROM fact WHERE name = '{}'", lastRunFact)));
    facts.isIncomplete =
        database.number(fmt::format(
            "SELECT count(*) FROM fact WHERE name = '{}' AND value = CAST('{}' AS BLOB)", sumsFact,
            outdatedSums))
        != 0;
    facts.skips = FileTable::skips(database);
    facts.bytes = sizeOf(file) + sizeOf(file.native() + "-wal");
    if (damageOfStatistics(database) != Damage::None) {
        database.setDamaged();
    }
    if (database.problem()) {
        facts.problem = fmt::format("cannot read {}: {}", file.native(), *database.problem());
    }
    return facts;
}

std::string historyProblem(const std::filesystem::path &file)
{
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        return {};
    }
    Database database(file, Database::ForReading {});
    std::string problem = schemaProblem(database);
    if (problem.empty()) {
        problem = damageOf(database).words;
    }
    return database.problem() ? *database.problem() : problem;
}

} // namespace usage
