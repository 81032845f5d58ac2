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

std::optional<std::string> write(const Options &options, const Statistics &statistics)
{
    auto problem = makeFolder(options.data);
    if (!problem) {
        problem = replaceFile(options.data / "stats.json", statsJson(statistics));
    }
    return problem;
}

std::string report(const Options &options, const History &history, const Statistics &statistics)
{
    if (options.asJson) {
        return reportJson(statistics, *options.report);
    }
    if (statistics.days.empty()) {
        return fmt::format(fmt::runtime(history.files() == 0 ? noTranscripts : noUsage),
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
    if (const auto problem = makeFolder(options.data)) {
        return failed(*problem);
    }
    History history(options.data);
    if (!history.problem()) {
        history.update({options.claude, options.codex}, prices.table, now);
    }
    if (const auto problem = history.problem()) {
        return failed(*problem);
    }
    const Statistics statistics = computeStatistics(history, {}, now);
    if (options.report) {
        outcome.output = report(options, history, statistics);
    } else if (const auto problem = write(options, statistics)) {
        return failed(*problem);
    }
    if (const std::string skipped = history.skips().sentence(); !skipped.empty()) {
        say(outcome, skipped);
    }
    return outcome;
}

} // namespace indexer
