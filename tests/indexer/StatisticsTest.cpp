#include "usage/statistics/Statistics.h"
#include "indexer/report/Report.h"
#include "usage/pricing/PriceFile.h"
#include "usage/Scratch.h"
#include "usage/statistics/StatsJson.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace {

using namespace indexer;
using namespace usage;
using nlohmann::json;

/// A dollar's worth of output at one moment.
std::string dollar(const std::string &time, const std::string &session,
    const std::string &model = "claude-opus-5-5")
{
    constexpr const char *usage = R"("output_tokens":50000)";
    return AnswerLine {
        .id = time + model, .session = session, .time = time, .model = model, .usage = usage}
        .line();
}

/// Around the ends of days, weeks and months in Berlin; today is Saturday, the 21st.
const std::vector<std::string> history {
    dollar("2026-10-31T22:59:59Z", "s1"), // Saturday, October 31st
    dollar("2026-10-31T23:00:00Z", "s1"), // Sunday, November 1st
    dollar("2026-11-08T23:00:00Z", "s2"), // Monday, November 9th
    dollar("2026-11-15T22:59:59Z", "s2"), // Sunday, November 15th
    dollar("2026-11-15T23:00:00Z", "s2"), // Monday, November 16th
    dollar("2026-11-19T23:00:00Z", "s3"), // Friday, November 20th
    dollar("2026-11-20T22:59:59Z", "s4"), // still Friday
    dollar("2026-11-20T23:00:00Z", "s4"), // Saturday
    dollar("2026-11-20T23:00:00Z", "s4", "unheard-of"),
};

std::string table(const Scratch &scratch, ReportKind kind)
{
    History kept;
    scratch.update(kept);
    return reportTable(computeStatistics(kept, builtInPrices(), {}, testNow()), {.kind = kind}, {});
}

TEST(Statistics, addUpCalendarSpansAndHaveARowForEachPeriod)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl", history);
    const json stats = scratch.stats();
    const std::tuple<const char *, double, int, int> rows[] = {{"today", 1, 100'000, 1},
        {"yesterday", 2, 100'000, 2}, {"week", 4, 250'000, 3}, {"lastWeek", 2, 100'000, 1},
        {"month", 7, 400'000, 4}, {"lastMonth", 1, 50'000, 1}};
    for (const auto &[span, cost, output, sessions] : rows) {
        const json &totals = stats["totals"][span];
        EXPECT_EQ(totals["cost"], cost) << span;
        EXPECT_EQ(totals["tokens"]["output"], output) << span;
        EXPECT_EQ(totals["sessions"], sessions) << span;
    }
    EXPECT_EQ(stats["providers"]["claude"]["totals"], stats["totals"]);
    ASSERT_EQ(stats["days"].size(), 22U);
    EXPECT_EQ(stats["days"][0]["date"], "2026-10-31");
    EXPECT_EQ(stats["days"][2],
        json::parse(R"({"date":"2026-11-02","cost":0.0,"models":{},)"
                    R"("tokens":{"input":0,"output":0,"cacheWrite":0,"total":0}})"));
    EXPECT_EQ(stats["days"][21]["models"], (json {{"claude-opus-5-5", 1.0}}));
    std::string weeks;
    for (const json &week : stats["weeks"]) {
        weeks += week["start"].get<std::string>() + ' ' + week["cost"].dump() + '|';
    }
    EXPECT_EQ(weeks, "2026-10-26 2.0|2026-11-02 0.0|2026-11-09 2.0|2026-11-16 4.0|");
}

/// A rollout's line, at a time of day.
std::string rolloutLine(
    const std::string &time, const std::string &type, const std::string &payload)
{
    return fmt::format(
        R"({{"timestamp":"2026-11-20T{}Z","type":"{}","payload":{{{}}}}})", time, type, payload);
}

/// A response of 10 dollars, at twice the price in a fast turn.
std::string response(const std::string &time, const std::string &id)
{
    return rolloutLine(time, "token_usage_record",
        fmt::format(R"("response_id":"{}","usage":{{"output_tokens":1000000}})", id));
}

TEST(Statistics, tellProvidersApartAndAddThemUp)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl", {dollar("2026-11-20T22:00:00Z", "t1")});
    scratch.rollout("a",
        {rolloutLine("22:30:00", "session_meta", R"("id":"t1","cwd":"/home/u/elsewhere")"),
            rolloutLine("22:30:00", "turn_context", R"("model":"gpt-6.2-sol","cwd":"/home/u/p")"),
            rolloutLine("22:30:00", "response_item",
                R"("type":"message","role":"user","content":[{"type":"input_text",)"
                R"("text":"<environment_context>…"},{"type":"input_text","text":"Do it"}])"),
            response("22:59:59.999", "r1"),
            rolloutLine("22:59:59.999", "event_msg",
                R"("type":"thread_settings_applied","thread_settings":{"service_tier":"priority"})"),
            response("23:00:00", "r2")});
    json stats = scratch.stats();
    const std::tuple<const char *, const char *, double, int> rows[] = {
        {"claude", "yesterday", 1, 1}, {"claude", "today", 0, 0}, {"codex", "yesterday", 10, 1},
        {"codex", "today", 20, 1}, {"codex", "week", 30, 1}};
    for (const auto &[provider, span, cost, sessions] : rows) {
        const json &totals = stats["providers"][provider]["totals"][span];
        EXPECT_EQ(totals["cost"], cost) << provider << ' ' << span;
        EXPECT_EQ(totals["sessions"], sessions) << provider << ' ' << span;
    }
    // Sessions of one name are two when they are of two providers.
    EXPECT_EQ(stats["totals"]["yesterday"]["cost"], 11);
    EXPECT_EQ(stats["totals"]["yesterday"]["sessions"], 2);
    EXPECT_EQ(stats["days"][0]["models"], (json {{"claude-opus-5-5", 1}, {"gpt-6.2-sol", 10}}));
    ASSERT_EQ(stats["sessions"].size(), 2U);
    json &row = stats["sessions"][0];
    row.erase("tokens");
    EXPECT_EQ(row,
        (json {{"title", "Do it"}, {"project", "p"}, {"end", "2026-11-20T23:00:00.000Z"},
            {"cost", 30}, {"provider", "codex"}}));
    // Names that the user gave go before what was written; an empty one takes them back.
    const std::string index =
        R"({"id":"t1","thread_name":"Named","updated_at":"2026-11-20T09:00:00Z"})";
    scratch.write("codex/session_index.jsonl", "?\n" + index + '\n');
    EXPECT_EQ(scratch.stats()["sessions"][0]["title"], "Named");
    scratch.write("codex/session_index.jsonl",
        index + '\n'
            + R"({"id":"t1","thread_name":"","updated_at":"2026-11-20T10:00:00Z"})"
              "\n");
    EXPECT_EQ(scratch.stats()["sessions"][0]["title"], "Do it");
}

TEST(Statistics, haveNoCostWhereNothingHasAPrice)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl",
        {dollar("2026-11-21T10:00:00Z", "s1", "unheard-of"),
            AnswerLine {.model = "unheard-of", .usage = R"("input_tokens":0)"}.line()});
    const json stats = scratch.stats();
    EXPECT_FALSE(stats["totals"]["today"].contains("cost"));
    const json &unpriced = stats["days"][1];
    EXPECT_TRUE(unpriced.contains("estimated") && !unpriced.contains("cost"));
    // But nothing used is nothing spent.
    const json &unused = stats["days"][0];
    EXPECT_TRUE(unused["cost"] == 0.0 && !unused.contains("estimated"));
    EXPECT_EQ(unused["models"], json::object());
}

TEST(Statistics, nameEachModelOnceAndSayWhyItsCostIsAnEstimate)
{
    const Scratch scratch;
    const auto codex = [](const char *second, const char *model, const char *usage) {
        const std::string time = fmt::format("10:00:0{}", second);
        return rolloutLine(time, "turn_context", fmt::format(R"("model":"{}")", model)) + '\n'
            + rolloutLine(time, "token_usage_record",
                fmt::format(R"("response_id":"r{}","usage":{{{}}})", second, usage));
    };
    scratch.transcript("p/a.jsonl",
        {dollar("2026-11-20T10:00:00Z", "s1"),
            dollar("2026-11-20T11:00:00Z", "s1", "claude-opus-5-5[1m]"),
            dollar("2026-11-20T12:00:00Z", "s2", "anthropic/claude-opus-5-5-20260922")});
    scratch.rollout("a",
        {rolloutLine("10:00:00", "session_meta", R"("id":"t1")"),
            codex("1", "gpt-5.6-codex", R"("output_tokens":50000)"),
            codex("2", "gpt-5.1-2025-11-13", R"("output_tokens":100000)"),
            codex("3", "gpt-6.2-astra", R"("output_tokens":25000)"),
            codex("4", "gpt-6.2-astra", R"("input_tokens":1000000,"cached_input_tokens":1000000)"),
            codex("5", "codex-auto-review", R"("output_tokens":1)")});
    EXPECT_EQ(scratch.stats()["days"][0]["models"],
        json::parse(R"({"claude-opus-5-5":3,"gpt-5.6-codex":1,"gpt-5.1":1,"gpt-6.2-astra":1.8})"));
    History kept;
    scratch.update(kept);
    const Statistics statistics = computeStatistics(kept, builtInPrices(), {}, testNow());
    const json report = json::parse(reportJson(statistics, {.byModel = true}));
    json reasons;
    for (const auto &[model, told] : report[0]["models"].items()) {
        reasons[model] = told["reason"];
    }
    EXPECT_EQ(reasons,
        json::parse(R"({"claude-opus-5-5":null,"gpt-5.6-codex":"assumed","gpt-5.1":null,)"
                    R"("gpt-6.2-astra":"assumed","codex-auto-review":"unknown"})"));
}

TEST(Statistics, bearTextsThatAreNone)
{
    Statistics statistics;
    statistics.sessions.push_back({.title = "a\xff"});
    EXPECT_EQ(json::parse(statsJson(statistics))["sessions"][0]["title"], "a\uFFFD");
}

TEST(Report, addsUpItsRowsAndGivesTheTerminalNoOrders)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl", history);
    scratch.transcript("p/b.jsonl",
        {R"({"type":"ai-title","sessionId":"s5","aiTitle":"日本語のタイトル that goes on and on and on and on"})",
            AnswerLine {.session = "s5",
                .model = R"(a\u001b[31mb\u009b1mc\u007f)" + std::string(60, 'd'),
                .folder = R"(/w/x\u001b]0;y\u0007)"}
                .line()});
    const std::string sessions = table(scratch, ReportKind::Sessions);
    EXPECT_EQ(sessions.find_first_of("\x1b\x07\x7f"), std::string::npos) << sessions;
    for (const char *part : {"x ]0;y  ", "日本語のタイトル that goes on and on an…  1,000,000",
             "a?[31mb?1mc?dddd", "d…", "1,000,000  550,000            0           0  $8.00 *"}) {
        EXPECT_NE(sessions.find(part), std::string::npos) << sessions;
    }
}

} // namespace
