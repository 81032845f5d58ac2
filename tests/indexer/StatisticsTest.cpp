#include "indexer/Statistics.h"
#include "indexer/PriceFile.h"
#include "indexer/Report.h"
#include "indexer/Scratch.h"

#include <gtest/gtest.h>

namespace {

using namespace indexer;
using nlohmann::json;

/// A dollar's worth of output at one moment.
std::string dollar(const std::string &time, const std::string &session,
    const std::string &model = "claude-opus-5-5")
{
    return Answer {.id = time + session + model,
        .session = session,
        .time = time,
        .model = model,
        .usage = R"("output_tokens":50000)"}
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

Statistics statistics(const Scratch &scratch)
{
    Scan scan(testNow());
    scan.addClaude(scratch.claude());
    return computeStatistics(scan, builtInPrices(), testNow());
}

TEST(Statistics, addUpCalendarSpansAndHaveARowForEachPeriod)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl", history);
    const json stats = scratch.stats();
    const struct {
        const char *span;
        double cost;
        int output;
        int sessions;
    } rows[] = {{"today", 1, 100'000, 1}, {"yesterday", 2, 100'000, 2}, {"week", 4, 250'000, 3},
        {"lastWeek", 2, 100'000, 1}, {"month", 7, 400'000, 4}, {"lastMonth", 1, 50'000, 1}};
    for (const auto &row : rows) {
        const json &totals = stats["totals"][row.span];
        EXPECT_EQ(totals["cost"], row.cost) << row.span;
        EXPECT_EQ(totals["tokens"]["output"], row.output) << row.span;
        EXPECT_EQ(totals["sessions"], row.sessions) << row.span;
    }
    EXPECT_EQ(stats["providers"], (json {{"claude", {{"totals", stats["totals"]}}}}));

    ASSERT_EQ(stats["days"].size(), 22U);
    EXPECT_EQ(stats["days"][0]["date"], "2026-10-31");
    const json gap = json::parse(R"({"date":"2026-11-02","cost":0.0,"models":{},)"
                                 R"("tokens":{"input":0,"output":0,"cacheWrite":0,"total":0}})");
    EXPECT_EQ(stats["days"][2], gap);
    EXPECT_EQ(stats["days"][21]["models"], (json {{"claude-opus-5-5", 1.0}}));
    std::vector<std::string> weeks;
    for (const json &week : stats["weeks"]) {
        weeks.push_back(week["start"].get<std::string>() + ' ' + week["cost"].dump());
    }
    EXPECT_EQ(weeks,
        (std::vector<std::string> {
            "2026-10-26 2.0", "2026-11-02 0.0", "2026-11-09 2.0", "2026-11-16 4.0"}));
    EXPECT_EQ(stats["months"][0]["month"], "2026-10");
    EXPECT_EQ(stats["months"][1]["cost"], 7.0);
}

TEST(Statistics, haveNoCostWhereNothingHasAPrice)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl",
        {dollar("2026-11-21T10:00:00Z", "s1", "unheard-of"),
            Answer {.model = "unheard-of", .usage = R"("input_tokens":0)"}.line()});
    const json stats = scratch.stats();
    EXPECT_FALSE(stats["days"][1].contains("cost"));
    EXPECT_FALSE(stats["totals"]["today"].contains("cost"));
    EXPECT_TRUE(stats["days"][1].contains("estimated"));
    // But nothing used is nothing spent.
    EXPECT_EQ(stats["days"][0]["cost"], 0.0);
    EXPECT_EQ(stats["days"][0]["models"], json::object());
    EXPECT_FALSE(stats["days"][0].contains("estimated"));
}

TEST(Report, listsWhatWasUsed)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl", history);
    scratch.transcript("p/b.jsonl",
        {R"({"type":"ai-title","aiTitle":"日本語のタイトル","sessionId":"s4"})",
            R"({"type":"ai-title","aiTitle":"a title that is a good deal too long for a table","sessionId":"s3"})"});
    const Statistics known = statistics(scratch);

    EXPECT_EQ(reportTable(known, ReportKind::Monthly),
        R"(Month    Input   Output  Cache write  Cache read   Cost    Models

2026-10      0   50,000            0           0  $1.00    claude-opus-5-5
2026-11      0  400,000            0           0  $7.00 *  claude-opus-5-5, unheard-of

Total        0  450,000            0           0  $8.00 *

* Some of this usage has no known price or was not recorded to its end, so the true cost is higher.
)");
    const std::string sessions = reportTable(known, ReportKind::Sessions);
    EXPECT_NE(sessions.find(
                  "2026-11-21  proj     日本語のタイトル                              0  150,000"),
        std::string::npos);
    EXPECT_NE(sessions.find("a title that is a good deal too long fo…      0"), std::string::npos)
        << sessions;
}

TEST(Report, givesTheTerminalNoOrders)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl",
        {Answer {.model = R"(a\u001b[31mb\u009b1mc\u007f)" + std::string(60, 'd'),
            .folder = R"(/w/x\u001b]0;y\u0007)"}
                .line()});
    const Statistics known = statistics(scratch);
    for (const ReportKind kind : {ReportKind::Daily, ReportKind::Sessions}) {
        const std::string table = reportTable(known, kind);
        EXPECT_EQ(table.find_first_of("\x1b\x07\x7f"), std::string::npos) << table;
        EXPECT_NE(table.find("a?[31mb?1mc?dddd"), std::string::npos) << table;
        EXPECT_NE(table.find("d…"), std::string::npos) << table;
    }
    EXPECT_NE(reportTable(known, ReportKind::Sessions).find("x ]0;y  "), std::string::npos);
}

} // namespace
