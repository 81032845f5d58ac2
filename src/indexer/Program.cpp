#include "indexer/Program.h"

#include "indexer/Doctor.h"
#include "indexer/LimitsFile.h"
#include "indexer/LimitsText.h"
#include "indexer/PriceFile.h"
#include "indexer/Printable.h"
#include "indexer/Report.h"
#include "indexer/SafeFile.h"
#include "indexer/StatsJson.h"
#include "indexer/Status.h"
#include "indexer/Terminal.h"
#include "indexer/TranscriptTree.h"
#include "indexer/Waybar.h"

#include <cstdlib>
#include <fmt/format.h>
#include <unistd.h>

namespace indexer {

namespace {

constexpr std::string_view noTranscripts = "No transcripts were found in {} and {}.\n";
constexpr std::string_view noUsage = "No usage was found in the transcripts in {} and {}.\n";

void say(Outcome &outcome, std::string_view text)
{
    outcome.messages += fmt::format("kestrelbay-indexer: {}\n", printable(text));
}

/// A failure is all that is said then.
Outcome failed(std::string_view text)
{
    Outcome outcome {.status = 1};
    say(outcome, text);
    return outcome;
}

std::optional<std::string> write(
    const Options &options, const Scan &scan, const Statistics &statistics, TimePoint now)
{
    auto problem = makeFolder(options.data);
    if (!problem) {
        problem = replaceFile(options.data / "stats.json", statsJson(statistics));
    }
    if (const auto limits = scan.rollouts().limits(); limits && !problem) {
        problem = writeLimits(options.data / "codex-limits.json", *limits, now);
    }
    return problem;
}

std::string report(const Options &options, const Scan &scan, const Statistics &statistics)
{
    const auto &report = std::get<ReportOptions>(options.command);
    if (statistics.days.empty() && report.format == ReportFormat::Table) {
        return fmt::format(fmt::runtime(scan.files() == 0 ? noTranscripts : noUsage),
            printable((options.claude / "projects").native()),
            printable((options.codex / "sessions").native()));
    }
    return reportText(statistics, report, terminalOf(STDOUT_FILENO));
}

Outcome doctor(const Options &options, TimePoint now)
{
    const char *path = std::getenv("PATH");
    const Findings findings = examine({.data = options.data,
        .claude = {options.claude, options.isClaudeNamed},
        .codex = {options.codex, options.isCodexNamed},
        .path = path == nullptr ? "" : path,
        .now = now,
        .newestAnswer = std::nullopt});
    return {.status = hasProblem(findings) ? 1 : 0,
        .output = findingsText(findings, terminalOf(STDOUT_FILENO)),
        .messages = {}};
}

Outcome status(const Options &options, TimePoint now)
{
    const HistoryFacts facts {.file = options.data / "history.sqlite"};
    switch (std::get<StatusOptions>(options.command).format) {
    case StatusFormat::Waybar:
        return {.output = waybarLine(options.data, options.claude, now)};
    case StatusFormat::Json:
        return {.output = statusJson(facts)};
    case StatusFormat::Text:
        break;
    }
    return {.output = statusText(facts, now, terminalOf(STDOUT_FILENO))};
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
    // Before anything else: statistics of nothing must not replace those that there are.
    if (const auto problem = whyUnreadable(options.claude, "projects", !options.isClaudeNamed)) {
        return failed(*problem);
    }
    for (const char *inner : {"sessions", "archived_sessions"}) {
        if (const auto problem = whyUnreadable(options.codex, inner, !options.isCodexNamed)) {
            return failed(*problem);
        }
    }
    Outcome outcome;
    const std::filesystem::path priceFile = options.data / "prices.json";
    const LoadedPrices prices = loadPrices(priceFile);
    if (!prices.problem.empty()) {
        say(outcome,
            fmt::format(
                "{} is not used, the built-in prices are: {}", priceFile.native(), prices.problem));
    }
    Scan scan(now);
    scan.addClaude(options.claude);
    scan.addCodex(options.codex);
    const Statistics statistics = computeStatistics(scan, prices.table, now);
    if (std::holds_alternative<ReportOptions>(options.command)) {
        outcome.output = report(options, scan, statistics);
        const auto &wanted = std::get<ReportOptions>(options.command);
        if (wanted.format == ReportFormat::Table && wanted.kind == ReportKind::Daily) {
            const std::string limits = limitsText(
                readStoredLimits(options.data, options.claude), now, terminalOf(STDOUT_FILENO));
            outcome.output += limits.empty() ? "" : '\n' + limits;
        }
    } else if (const auto problem = write(options, scan, statistics, now)) {
        return failed(*problem);
    }
    if (const std::string skipped = scan.skips().sentence(); !skipped.empty()) {
        say(outcome, skipped);
    }
    return outcome;
}

} // namespace indexer
