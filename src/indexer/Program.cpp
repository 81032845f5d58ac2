#include "indexer/Program.h"

#include "indexer/LimitsFile.h"
#include "indexer/PriceFile.h"
#include "indexer/Printable.h"
#include "indexer/SafeFile.h"
#include "indexer/StatsJson.h"
#include "indexer/TranscriptTree.h"

#include <fmt/format.h>

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
    if (options.asJson) {
        return reportJson(statistics, *options.report);
    }
    if (statistics.days.empty()) {
        return fmt::format(fmt::runtime(scan.files() == 0 ? noTranscripts : noUsage),
            printable((options.claude / "projects").native()),
            printable((options.codex / "sessions").native()));
    }
    return reportTable(statistics, *options.report);
}

} // namespace

Outcome run(const Options &options, TimePoint now)
{
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
    if (options.report) {
        outcome.output = report(options, scan, statistics);
    } else if (const auto problem = write(options, scan, statistics, now)) {
        return failed(*problem);
    }
    if (const std::string skipped = scan.skips().sentence(); !skipped.empty()) {
        say(outcome, skipped);
    }
    return outcome;
}

} // namespace indexer
