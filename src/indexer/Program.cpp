#include "indexer/Program.h"

#include "indexer/PriceFile.h"
#include "indexer/SafeFile.h"
#include "indexer/StatsJson.h"

#include <fmt/format.h>

namespace indexer {

namespace {

constexpr std::string_view noTranscripts = "No Claude Code transcripts were found in {}.\n";
constexpr std::string_view noUsage = "No usage was found in the Claude Code transcripts in {}.\n";

void say(Outcome &outcome, std::string_view text)
{
    outcome.messages += fmt::format("kestrelbay-indexer: {}\n", text);
}

void fail(Outcome &outcome, std::string_view text)
{
    say(outcome, text);
    outcome.status = 1;
}

void writeStatistics(const Options &options, const Statistics &statistics, Outcome &outcome)
{
    auto problem = makeFolder(options.data);
    if (!problem) {
        problem = replaceFile(options.data / "stats.json", statsJson(statistics));
    }
    if (problem) {
        fail(outcome, *problem);
    }
}

std::string report(const Options &options, const Scan &scan, const Statistics &statistics)
{
    if (options.asJson) {
        return reportJson(statistics, *options.report);
    }
    if (statistics.days.empty()) {
        return fmt::format(fmt::runtime(scan.files() == 0 ? noTranscripts : noUsage),
            (options.claude / "projects").native());
    }
    return reportTable(statistics, *options.report);
}

} // namespace

Outcome run(const Options &options, TimePoint now)
{
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
    const Statistics statistics = computeStatistics(scan, prices.table, now);
    if (options.report) {
        outcome.output = report(options, scan, statistics);
    } else {
        writeStatistics(options, statistics, outcome);
    }
    if (const std::string skipped = scan.skips().sentence(); !skipped.empty()) {
        say(outcome, skipped);
    }
    return outcome;
}

} // namespace indexer
