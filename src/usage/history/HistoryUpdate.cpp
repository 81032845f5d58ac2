#include "usage/history/HistoryUpdate.h"

#include "usage/history/HistoryWriter.h"
#include "usage/history/tables/SealedTables.h"
#include "usage/history/tables/ThreadNameTable.h"

#include <algorithm>
#include <fmt/format.h>

namespace usage {

namespace {

/// With more to read, sums are made once, from all that there is.
constexpr std::uint64_t muchToRead = std::uint64_t {16} << 20U;

/// To be raised when answers are summed by other rules, and no version tells so.
constexpr int summingRules = 2;

/// One spelling for each folder, by way of whatever links.
std::filesystem::path wholePath(const std::filesystem::path &path)
{
    std::error_code error;
    const auto whole = std::filesystem::weakly_canonical(path, error);
    return error ? path : whole;
}

std::uint64_t bytesOf(const std::vector<FileTask> &tasks)
{
    std::uint64_t bytes = 0;
    for (const FileTask &task : tasks) {
        bytes += task.size - std::min(task.size, task.from ? task.from->place : 0);
    }
    return bytes;
}

} // namespace

HistoryUpdate::HistoryUpdate(Database &database, const PriceTable &prices, TimePoint now)
    : m_database(database)
    , m_prices(prices)
    , m_now(now)
    , m_facts(database)
    , m_fileTable(database)
    , m_rollouts(database)
{
}

void HistoryUpdate::run(const SourceFolders &folders, const ProgressTold &progress)
{
    const std::vector<KnownFile> known = m_fileTable.all();
    const ReadPlan plan = planReading(known, find(folders), m_now);
    const std::string version = sumsVersion();
    const bool isCurrent = m_facts.text(sumsFact) == version;
    updateThreadNames(m_database, folders.codex, m_skips);
    updateThreadTitles(m_database, folders.codex);
    m_facts.set(lastRunFact, m_now.time_since_epoch().count());
    if (m_database.problem() || (plan.isEmpty() && isCurrent)) {
        return;
    }
    const std::vector<FileTask> toRead = tasks(plan);
    const bool isLittle = plan.moved.empty() && bytesOf(toRead) < muchToRead;
    const SumUpkeep upkeep = isCurrent && isLittle ? SumUpkeep::WithEachBatch : SumUpkeep::AtTheEnd;
    noteMoves(plan);
    HistoryWriter store(m_database, m_prices, plan, m_now);
    ParallelReader harvest(m_now, progress);
    harvest.read(toRead, [&](FilePiece &&piece) {
        m_skips.add(piece.skips);
        return store.add(std::move(piece), upkeep);
    });
    m_skips.add(harvest.skips());
    store.flush(upkeep);
    if (m_facts.text(sumsFact) != version) {
        if (!known.empty()) {
            // Rows that are missing from a page would be missing from the sums.
            checkStructure(m_database, "answer");
            checkStructure(m_database, rolloutTable.name);
        }
        store.rebuildSums(version);
        m_database.run("PRAGMA wal_checkpoint(TRUNCATE)");
    }
}

void HistoryUpdate::renewSums()
{
    const ReadPlan nothing;
    HistoryWriter(m_database, m_prices, nothing, m_now).rebuildSums(sumsVersion());
}

/// What the sums are made by, besides the answers.
std::string HistoryUpdate::sumsVersion() const
{
    return fmt::format(
        KESTRELBAY_VERSION " {} {:x} {:x}", summingRules, m_prices.hash(), calendarHash(m_now));
}

std::vector<FoundFiles> HistoryUpdate::find(const SourceFolders &folders)
{
    const std::filesystem::path claude = wholePath(folders.claude) / "projects";
    const std::filesystem::path codex = wholePath(folders.codex);
    std::vector<FoundFiles> found {
        {Provider::Claude, {claude.native()}, findTranscripts(claude, m_skips)},
        {Provider::Codex, {(codex / "sessions").native(), (codex / "archived_sessions").native()},
            findRollouts(codex, m_skips)}};
    for (const FoundFiles &each : found) {
        m_files += each.files.size();
    }
    return found;
}

std::vector<FileTask> HistoryUpdate::tasks(const ReadPlan &plan)
{
    std::vector<FileTask> tasks;
    for (const PlannedFile &file : plan.files) {
        FileTask &task = tasks.emplace_back();
        task.file = static_cast<std::int64_t>(tasks.size()) - 1;
        task.provider = file.provider;
        task.path = file.found.path;
        task.size = file.found.identity.size;
        task.isKnown = file.known != nullptr;
        if (file.known != nullptr && !file.isFromStart) {
            task.from = file.known->mark;
            task.rollout = file.provider == Provider::Codex ? m_rollouts.told(file.known->id) : "";
        }
    }
    return tasks;
}

void HistoryUpdate::noteMoves(const ReadPlan &plan)
{
    if (plan.moved.empty() && plan.gone.empty() && plan.back.empty() && plan.same.empty()) {
        return;
    }
    Transaction transaction(m_database);
    for (const auto &[file, path] : plan.moved) {
        m_fileTable.move(file->id, path);
    }
    for (const KnownFile *file : plan.gone) {
        m_fileTable.setGone(file->id, true);
    }
    for (const KnownFile *file : plan.back) {
        m_fileTable.setGone(file->id, false);
    }
    for (const auto &[file, identity] : plan.same) {
        m_fileTable.setIdentity(file->id, identity);
    }
    if (!plan.moved.empty()) {
        // Titles depend on paths.
        m_facts.set(sumsFact, outdatedSums);
        m_facts.set(writtenFact, "");
    }
    transaction.commit();
}

} // namespace usage
