#include "indexer/report/Report.h"

#include "indexer/CommandLine.h"
#include "indexer/report/LimitsText.h"
#include "indexer/terminal/FigureText.h"
#include "indexer/terminal/TextWidth.h"
#include "usage/Scratch.h"

#include <cstdlib>
#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace indexer;
using namespace usage;
using namespace std::chrono_literals;

namespace {

const Day friday {std::chrono::days {20777}}; // 2026-11-20

/// Two models on one day and in one session, one of them without a price.
Statistics someStatistics()
{
    constexpr Money::Amount dollar = 1'000'000'000'000;
    Spending spending;
    spending.add("claude-opus-5-5",
        {.used = 1, .input = 1'000'000, .output = 100, .picodollars = 6 * dollar});
    spending.add("a,\"b\"", {.used = 1, .unpriced = 1, .estimated = 1, .input = 5, .cacheRead = 7});
    Statistics statistics;
    statistics.days = {{friday - std::chrono::days {1}, {}, {}}, {friday, spending, {}}};
    statistics.sessions = {{Provider::Codex, "=HYPERLINK(\"x\")\x1b[31m, 日本語のタイトル", "-p",
        testNow(), spending}};
    return statistics;
}

/// The options that a command line makes, as one text, or what it complains about.
std::string understood(const std::vector<const char *> &words)
{
    std::vector<const char *> all {"kestrelbay-indexer", "report"};
    all.insert(all.end(), words.begin(), words.end());
    const auto parsed = parseCommandLine(static_cast<int>(all.size()), all.data(), testNow());
    if (const auto *end = std::get_if<EarlyEnd>(&parsed)) {
        return fmt::format("[{}] {}", end->status, end->text);
    }
    const auto &report = std::get<ReportOptions>(std::get<Options>(parsed).command);
    const auto day = [](const std::optional<Day> &it) { return it ? dayText(*it) : "-"; };
    return fmt::format("{} {} {} {} {} {}", static_cast<int>(report.kind),
        report.filter.provider ? static_cast<int>(*report.filter.provider) : -1,
        day(report.filter.since), day(report.filter.until), static_cast<int>(report.format),
        report.byModel);
}

TEST(ReportOptions, areReadFromTheCommandLine)
{
    const std::pair<std::vector<const char *>, const char *> rows[] = {{{}, "0 -1 - - 0 false"},
        {{"sessions", "--provider", "codex", "--csv", "--models"}, "3 1 - - 2 true"},
        {{"--since", "7d", "--until", "yesterday", "--json"}, "0 -1 2026-11-15 2026-11-20 1 false"},
        {{"--since=2024-02-29", "--until=today"}, "0 -1 2024-02-29 2026-11-21 0 false"},
        {{"--since", "today", "--until", "yesterday"},
            "[2] kestrelbay-indexer: --since: 2026-11-21"},
        {{"--since", "2026-02-29"}, "[2] kestrelbay-indexer: --since: no such day: 2026-02-29"},
        {{"--until", "0d"}, "[2] kestrelbay-indexer: --until: no such day: 0d"},
        {{"--until", ""}, "[2] kestrelbay-indexer: --until: no such day:"},
        {{"--json", "--csv"}, "[2] kestrelbay-indexer: --json excludes --csv"},
        {{"--provider", "\x1b[1m"}, "[2] kestrelbay-indexer: --provider: ?[1m not in"}};
    for (const auto &[words, expected] : rows) {
        const std::string said = understood(words);
        EXPECT_TRUE(said.starts_with(expected)) << said;
        EXPECT_TRUE(said.front() != '[' || said.find('\n') == said.size() - 1) << said;
    }
}

TEST(Cost, isRoundedFromTheExactAmount)
{
    constexpr Money::Amount thousandth = 1'000'000'000;
    const std::pair<Money::Amount, const char *> rows[] = {{0, "$0.00"},
        {125 * thousandth, "$0.13"}, {125 * thousandth - 1, "$0.12"}, {2675 * thousandth, "$2.68"},
        {999'995 * thousandth, "$1000.00"}};
    for (const auto &[picodollars, text] : rows) {
        EXPECT_EQ(costText(Money(picodollars)), text);
    }
    EXPECT_EQ(costText(Money::ofDollars(2.675)), "$2.68");
    EXPECT_EQ(costText(std::nullopt), "?");
}

TEST(ReportCsv, quotesAndLeavesNothingToCalculate)
{
    const Statistics statistics = someStatistics();
    EXPECT_EQ(reportCsv(statistics, {}),
        "date,input,output,cacheWrite,cacheRead,cost,estimated\r\n"
        "2026-11-20,1000005,100,0,7,6.000000,true\r\n");
    EXPECT_EQ(reportCsv(statistics, {.kind = ReportKind::Sessions, .byModel = true}),
        "end,provider,project,title,model,input,output,cacheWrite,cacheRead,cost\r\n"
        "2026-11-21T12:00:00.000Z,codex,\"'-p\",\"'=HYPERLINK(\"\"x\"\")?[31m, 日本語のタイトル\","
        "\"a,\"\"b\"\"\",5,0,0,7,\r\n"
        "2026-11-21T12:00:00.000Z,codex,\"'-p\",\"'=HYPERLINK(\"\"x\"\")?[31m, 日本語のタイトル\","
        "claude-opus-5-5,1000000,100,0,0,6.000000\r\n");
}

TEST(ReportCsv, takesWideSignsForSigns)
{
    Statistics statistics = someStatistics();
    const std::pair<const char *, const char *> rows[] = {{"＝1+1", "\"'＝1+1\""},
        {"\u3000＠SUM", "\"'\u3000＠SUM\""}, {" \u00A0-1", "\"' \u00A0-1\""}, {"1＝1", "1＝1"},
        {"a\u202Eb", "a?b"}};
    for (const auto &[title, cell] : rows) {
        statistics.sessions.front().title = title;
        const std::string csv = reportCsv(statistics, {.kind = ReportKind::Sessions});
        EXPECT_NE(csv.find(fmt::format(",{},1000005", cell)), std::string::npos) << csv;
    }
}

TEST(ReportJson, tellsEachModelsTokensWhereAsked)
{
    const auto parsed = [](bool byModel) {
        return nlohmann::json::parse(reportJson(someStatistics(), {.byModel = byModel}));
    };
    EXPECT_EQ(parsed(false)[0]["models"],
        nlohmann::json::parse(R"({"claude-opus-5-5":6.0,"a,\"b\"":null})"));
    EXPECT_EQ(parsed(true)[0]["models"]["a,\"b\""],
        nlohmann::json::parse(
            R"({"input":5,"output":0,"cacheWrite":0,"cacheRead":7,"cost":null,"reason":"unknown"})"));
    // Two that look the same stay two.
    Statistics statistics = someStatistics();
    Spending spending;
    for (const char *model : {"a\x1b", "a\u202e", "a?"}) {
        spending.add(model, {.used = 1, .input = 5});
    }
    statistics.days = {{friday, spending, {}}};
    const auto all = nlohmann::json::parse(reportJson(statistics, {.byModel = true}));
    EXPECT_EQ(all[0]["models"].size(), 3U) << all;
}

TEST(ReportTable, fitsTheTerminal)
{
    const Statistics statistics = someStatistics();
    for (const bool byModel : {false, true}) {
        std::string last;
        for (const std::size_t width : {100U, 60U, 45U, 40U}) {
            const std::string table = reportTable(
                statistics, {.kind = ReportKind::Sessions, .byModel = byModel}, {.width = width});
            std::istringstream lines(table.substr(0, table.find("\n*")));
            for (std::string line; std::getline(lines, line);) {
                EXPECT_LE(widthOf(line), width) << line;
                EXPECT_FALSE(line.ends_with(' ')) << line;
            }
            for (const char *part : {"2026-11-21", "Total", "$6.00 *", "=HYP"}) {
                EXPECT_NE(table.find(part), std::string::npos) << part << '\n' << table;
            }
            EXPECT_NE(table, last);
            last = table;
        }
    }
}

TEST(ReportTable, showsModelsAndIsColouredOnlyWhereThatIsSeen)
{
    EXPECT_EQ(reportTable(someStatistics(), {.byModel = true}, {}),
        "Date                   Input  Output  Cache write  Cache read   Cost\n"
        "\n"
        "2026-11-20         1,000,005     100            0           7  $6.00 *\n"
        "  a,\"b\"                    5       0            0           7      ?\n"
        "  claude-opus-5-5  1,000,000     100            0           0  $6.00\n"
        "\n"
        "Total              1,000,005     100            0           7  $6.00 *\n"
        "  a,\"b\"                    5       0            0           7      ?\n"
        "  claude-opus-5-5  1,000,000     100            0           0  $6.00\n"
        "\n"
        "* An estimate: some of this usage has no known price or an assumed one, or was not"
        " recorded to its end.\n");
    const std::string coloured = reportTable(someStatistics(), {}, {.hasColour = true});
    EXPECT_NE(coloured.find("\x1b[1mDate\x1b[0m"), std::string::npos) << coloured;
    EXPECT_NE(coloured.find("\x1b[2m0\x1b[0m"), std::string::npos) << coloured;
}

TEST(Terminal, obeysItsEnvironment)
{
    const int leader = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(leader >= 0 && ::unlockpt(leader) == 0);
    const int terminal = ::open(::ptsname(leader), O_RDWR | O_NOCTTY);
    const winsize size {.ws_row = 24, .ws_col = 91, .ws_xpixel = 0, .ws_ypixel = 0};
    ASSERT_EQ(::ioctl(terminal, TIOCSWINSZ, &size), 0);
    const std::tuple<std::map<std::string, const char *>, bool, std::size_t> rows[] = {
        {{}, true, 91}, {{{"NO_COLOR", ""}, {"COLUMNS", "50"}}, true, 50},
        {{{"NO_COLOR", "0"}, {"COLUMNS", "0"}}, false, 91},
        {{{"TERM", "dumb"}, {"COLUMNS", "5x"}}, false, 91}};
    for (const auto &[variables, hasColour, width] : rows) {
        const Terminal found = terminalOf(terminal, [&set = variables](const char *name) {
            return set.contains(name) ? set.at(name) : nullptr;
        });
        EXPECT_TRUE(found.isTerminal);
        EXPECT_EQ(found.hasColour, hasColour);
        EXPECT_EQ(found.width, width);
    }
    ::close(terminal);
    ::close(leader);
    EXPECT_FALSE(terminalOf(leader).isTerminal);
}

TEST(Limits, areNeverToldAsLiveWhenTheyAreNot)
{
    // It is 2026-11-21 12:00 UTC, an hour later in Berlin.
    const std::tuple<const char *, const char *, std::optional<double>> rows[] = {
        {R"({"updatedAt":"2026-11-21T11:58:00Z","fiveHour":{"percent":71.5,)"
         R"("resetsAt":"2026-11-21T14:10:00.5+00:00"},"sevenDay":{"percent":"x"}})",
            "  Claude  5 hours        72%  resets in 2 h 10 min (15:10)\n", 71.5},
        {"\xEF\xBB\xBF"
         R"({"updatedAt":1795255200,"fiveHour":{"percent":90,"resetsAt":1795262400000}})",
            "  Claude  5 hours    was 90%  has begun anew since (13:00); no newer figure\n"
            "          told 2 h 0 min ago\n",
            std::nullopt},
        {R"({"updatedAt":"2026-11-21T06:59:00Z","fiveHour":{"percent":90}})",
            "  Claude  5 hours    was 90%  out of date; no newer figure\n"
            "          told 5 h 1 min ago\n",
            std::nullopt},
        {R"({"updatedAt":"2026-11-22T12:00:00Z","sevenDay":{"percent":90}})",
            "  Claude  week       was 90%  out of date; no newer figure\n", std::nullopt},
        {R"({"fiveHour":{"percent":90,"resetsAt":"2999-01-01T00:00:00Z"}})",
            "  Claude  5 hours    was 90%  out of date; no newer figure\n", std::nullopt},
        {R"({"fiveHour":{"percent":1e308,"resetsAt":1e300},"updatedAt":-1e300})",
            "  Claude  5 hours   was 999%  out of date; no newer figure\n", std::nullopt},
        {"[1", "", std::nullopt}};
    const Scratch scratch;
    for (const auto &[file, lines, fullest] : rows) {
        scratch.write("claude/usage-limits.json", file);
        const auto all = readStoredLimits(scratch.root() / "data", scratch.claude());
        const std::string text = limitsText(all, testNow(), {});
        EXPECT_EQ(text, std::string(*lines == '\0' ? "" : "Limits\n") + lines);
        EXPECT_EQ(fullestLive(all, testNow()), fullest) << file;
    }
}

TEST(Limits, ofCodexAreOrderedByTheirLength)
{
    const Scratch scratch;
    scratch.write("data/codex-limits.json",
        R"({"updatedAt":"2026-11-21T12:00:00Z","primary":{"percent":86,"minutes":43200},)"
        R"("secondary":{"percent":3}})");
    const auto all = readStoredLimits(scratch.root() / "data", scratch.claude());
    EXPECT_EQ(limitsText(all, testNow(), {.hasColour = true}),
        "\x1b[1mLimits\x1b[0m\n"
        "  Codex   5 hours         3%\n"
        "          30 days   \x1b[31m     86%\x1b[0m\n");
}

} // namespace
