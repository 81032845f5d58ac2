#include "indexer/Program.h"

#include "indexer/doctor/Doctor.h"
#include "indexer/report/LimitsText.h"
#include "indexer/report/Report.h"
#include "indexer/report/StatusText.h"
#include "indexer/report/Waybar.h"
#include "indexer/terminal/Printable.h"
#include "indexer/terminal/Progress.h"
#include "indexer/terminal/Terminal.h"
#include "usage/files/FileTree.h"
#include "usage/files/SafeFile.h"
#include "usage/history/Backup.h"
#include "usage/history/CodexWriter.h"
#include "usage/history/History.h"
#include "usage/history/HistorySummary.h"
#include "usage/history/tables/NoteTable.h"
#include "usage/limits/LimitsFile.h"
#include "usage/pricing/PriceFile.h"
#include "usage/statistics/StatsJson.h"

#include <cstdlib>
#include <fmt/format.h>
#include <unistd.h>

namespace indexer {

using namespace usage;

namespace {

constexpr std::string_view noTranscripts = "No transcripts were found in {} and {}.\n";
constexpr std::string_view noUsage = "No usage{} was found in the transcripts in {} and {}.\n";

void say(Outcome &outcome, std::string_view text)
{
    outcome.messages += fmt::format("kestrelbay-indexer: {}\n", printable(text));
}

/// What a report was narrowed down to, with a blank in front; empty when it is about everything.
std::string narrowing(const StatisticsFilter &filter)
{
    std::string text;
    if (filter.provider) {
        text += fmt::format(" of {}", providerNames.at(static_cast<std::size_t>(*filter.provider)));
    }
    if (filter.since) {
        text += " since " + dayText(*filter.since);
    }
    if (filter.until) {
        text += " until " + dayText(*filter.until);
    }
    return text;
}

/// Why a table would be empty.
std::string nothingFound(const Options &options, const ReportOptions &report, bool hasTranscripts)
{
    const std::string claude = printable((options.claude / "projects").native());
    const std::string codex = printable((options.codex / "sessions").native());
    return hasTranscripts ? fmt::format(noUsage, narrowing(report.filter), claude, codex)
                          : fmt::format(noTranscripts, claude, codex);
}

/// Nothing is told then but why, and what was said before.
Outcome failed(std::string_view text, Outcome outcome = {})
{
    outcome.status = 1;
    outcome.output.clear();
    say(outcome, text);
    return outcome;
}

constexpr const char *statisticsName = "stats.json";
constexpr const char *limitsName = "codex-limits.json";

std::string stateOf(const std::filesystem::path &file)
{
    struct stat status { };
    if (::stat(file.c_str(), &status) != 0) {
        return "none";
    }
    const FileIdentity identity = FileIdentity::of(status);
    return fmt::format("{} {} {}", identity.inode, identity.size, identity.modified);
}

std::string writtenState(const Options &options, TimePoint now)
{
    return fmt::format("{} {} {}", dayText(LocalCalendar().dayOf(now)),
        stateOf(options.data / statisticsName), stateOf(options.data / limitsName));
}

std::optional<std::string> write(
    const Options &options, const History &history, const Statistics &statistics, TimePoint now)
{
    auto problem = replaceFile(options.data / statisticsName, statsJson(statistics));
    if (const auto limits = storedLimits(history.database()); limits && !problem) {
        problem = writeLimits(options.data / limitsName, *limits, now);
    }
    if (!problem) {
        NoteTable(history.database()).set(writtenFact, writtenState(options, now));
        problem = history.problem();
    }
    return problem;
}

std::string report(
    const Options &options, const History &history, const Statistics &statistics, TimePoint now)
{
    const auto &report = std::get<ReportOptions>(options.command);
    const Terminal terminal = terminalOf(STDOUT_FILENO);
    const bool isTable = report.format == ReportFormat::Table;
    if (statistics.days.empty() && isTable) {
        return nothingFound(options, report, history.files() > 0);
    }
    std::string text = reportText(statistics, report, terminal);
    // Limits are of today, and of each assistant by itself.
    if (isTable && report.kind == ReportKind::Daily
        && report.filter.admits(LocalCalendar().dayOf(now))) {
        auto stored = readStoredLimits(options.data, options.claude);
        std::erase_if(
            stored, [&](const StoredLimits &each) { return !report.filter.admits(each.provider); });
        const std::string limits = limitsText(stored, now, terminal);
        text += limits.empty() ? "" : '\n' + limits;
    }
    return text;
}

bool isWritten(const Options &options, const History &history, TimePoint now)
{
    return NoteTable(history.database()).text(writtenFact) == writtenState(options, now);
}

Outcome doctor(const Options &options, TimePoint now)
{
    const char *path = std::getenv("PATH");
    const char *home = std::getenv("HOME");
    const std::filesystem::path history = options.data / History::fileName;
    const Findings findings = examine({.data = options.data,
        .claude = {options.claude, options.isClaudeNamed},
        .codex = {options.codex, options.isCodexNamed},
        .home = home == nullptr ? "/nonexistent" : home,
        .path = path == nullptr ? "" : path,
        .now = now,
        .newestAnswer = readHistorySummary(history).newestAnswer,
        .historyProblem = [&history] { return historyProblem(history); }});
    return {.status = hasProblem(findings) ? 1 : 0,
        .output = findingsText(findings, terminalOf(STDOUT_FILENO)),
        .messages = {}};
}

Outcome status(const Options &options, TimePoint now)
{
    const StatusFormat format = std::get<StatusOptions>(options.command).format;
    if (format == StatusFormat::Waybar) {
        return {.output = waybarLine(options.data, options.claude, now)};
    }
    const HistorySummary facts = readHistorySummary(options.data / History::fileName);
    if (facts.problem) {
        return failed(*facts.problem);
    }
    return {.output = format == StatusFormat::Json
            ? statusJson(facts)
            : statusText(facts, now, terminalOf(STDOUT_FILENO))};
}

Outcome backup(const Options &options)
{
    const auto &file = std::get<BackupOptions>(options.command).file;
    const auto problem = backUp(options.data / History::fileName, file);
    return problem ? failed(*problem) : Outcome {};
}

/// Before anything else: what cannot be read must not be taken for nothing. A folder of Codex that
/// nobody named holds nothing else up.
std::optional<Outcome> unreadable(const Options &options, Outcome &outcome)
{
    if (const auto problem = whyUnreadable(options.claude, "projects", !options.isClaudeArgument)) {
        return failed(*problem);
    }
    if (const auto problem = whyUnreadable(options.claude, "projects", !options.isClaudeNamed)) {
        say(outcome, *problem); // the variable may outlive the folder
    }
    for (const char *inner : {"sessions", "archived_sessions"}) {
        const auto problem = whyUnreadable(options.codex, inner, !options.isCodexNamed);
        if (problem && options.isCodexNamed) {
            return failed(*problem);
        }
        if (problem) {
            say(outcome, *problem);
            break;
        }
    }
    return std::nullopt;
}

/// A report on folders that were named is about these alone, unless the history was named as well.
bool isElsewhere(const Options &options)
{
    return std::holds_alternative<ReportOptions>(options.command) && !options.isDataNamed
        && (options.isClaudeArgument || options.isCodexNamed);
}

std::filesystem::path fromTheRoot(const std::filesystem::path &folder)
{
    std::error_code error;
    std::filesystem::path whole = std::filesystem::absolute(folder, error);
    return error ? folder : whole;
}

/// The history in the data folder, or one in memory; see its problem.
std::unique_ptr<History> updatedHistory(const Options &options, const PriceTable &prices,
    TimePoint now, bool isInMemory, const History::Use &use)
{
    auto history =
        isInMemory ? std::make_unique<History>() : std::make_unique<History>(options.data);
    if (!history->problem()) {
        Progress progress = standardErrorProgress();
        // What is stored by its path must mean the same wherever the next run is started.
        history->update(
            {fromTheRoot(options.claude), fromTheRoot(options.codex)}, prices, now,
            [&](std::uint64_t done, std::uint64_t all) { progress.update(done, all); }, use);
    }
    return history;
}

/// What a run has to tell; nothing when that was written before.
std::optional<Statistics> newStatistics(
    const Options &options, const History &history, const PriceTable &prices, TimePoint now)
{
    if (const auto *report = std::get_if<ReportOptions>(&options.command)) {
        return computeStatistics(history, prices, report->filter, now);
    }
    return isWritten(options, history, now)
        ? std::nullopt
        : std::optional(computeStatistics(history, prices, {}, now));
}

/// The user's own prices over the built-in ones, or these alone, which is said then.
PriceTable usedPrices(const Options &options, Outcome &outcome)
{
    const std::filesystem::path file = options.data / "prices.json";
    LoadedPrices prices = loadPrices(file);
    if (!prices.problem.empty()) {
        say(outcome,
            fmt::format(
                "{} is not used, the built-in prices are: {}", file.native(), prices.problem));
    }
    return std::move(prices.table);
}

/// Reads what is new, and then reports or writes what there is.
Outcome update(const Options &options, TimePoint now)
{
    Outcome outcome;
    if (const auto failure = unreadable(options, outcome)) {
        return *failure;
    }
    const PriceTable prices = usedPrices(options, outcome);
    const bool isInMemory = isElsewhere(options);
    auto problem = isInMemory ? std::nullopt : makeFolder(options.data);
    std::optional<Statistics> statistics;
    const auto use = [&](const History &history) {
        statistics = newStatistics(options, history, prices, now);
    };
    auto history = problem ? nullptr : updatedHistory(options, prices, now, isInMemory, use);
    if (history != nullptr && !history->remark().empty()) {
        say(outcome, history->remark());
    }
    problem = problem ? problem : history->problem();
    const bool isReport = std::holds_alternative<ReportOptions>(options.command);
    if (problem && isReport) {
        // Where nothing can be kept, there can still be a report.
        say(outcome, *problem + "; this report is of the transcripts that are there now");
        history = updatedHistory(options, prices, now, true, use);
        problem = history->problem();
    }
    if (isReport && !problem) {
        outcome.output = report(options, *history, *statistics, now);
    } else if (!problem && statistics) {
        problem = write(options, *history, *statistics, now);
    }
    if (problem) {
        return failed(*problem, std::move(outcome));
    }
    if (const std::string skipped = history->skips().sentence(); !skipped.empty()) {
        say(outcome, skipped);
    }
    return outcome;
}

} // namespace

Outcome run(const Options &options, TimePoint now)
{
    if (std::holds_alternative<DoctorOptions>(options.command)) {
        return doctor(options, now);
    }
    if (std::holds_alternative<StatusOptions>(options.command)) {
        return status(options, now);
    }
    if (std::holds_alternative<BackupOptions>(options.command)) {
        return backup(options);
    }
    return update(options, now);
}

} // namespace indexer
