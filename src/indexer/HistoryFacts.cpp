#include "indexer/HistoryFacts.h"

#include "indexer/FactTable.h"
#include "indexer/FileTable.h"
#include "indexer/SumTable.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>
#include <utility>

namespace indexer {

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

} // namespace

HistoryFacts readHistoryFacts(const std::filesystem::path &file)
{
    HistoryFacts facts {.file = file};
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        return facts;
    }
    Database database(file, Database::ForReading {});
    std::set<std::pair<Provider, TextId>> sessions;
    SumTable(database).visitAll([&](const SumKey &key, const Sum &sum) {
        facts.since = std::min(facts.since.value_or(key.day), key.day);
        facts.answers += sum.answers;
        sessions.emplace(key.provider, key.session);
    });
    facts.sessions = sessions.size();
    facts.files = static_cast<std::uint64_t>(database.number("SELECT count(*) FROM file"));
    facts.vanishedFiles =
        static_cast<std::uint64_t>(database.number("SELECT count(*) FROM file WHERE gone"));
    facts.newestAnswer = timeOfStamp(database.number("SELECT max(end) FROM session"));
    const FactTable known(database);
    facts.lastRun = timeOfStamp(known.number(lastRunFact));
    facts.isIncomplete = known.text(sumsFact) == outdatedSums;
    facts.skips = FileTable(database).skips();
    facts.bytes = sizeOf(file) + sizeOf(file.native() + "-wal");
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
    Statement rows(database, "PRAGMA quick_check(1)");
    std::string said;
    while (rows.next()) {
        said = rows.bytes(0);
    }
    return database.problem() ? *database.problem() : said == "ok" ? std::string() : said;
}

} // namespace indexer
