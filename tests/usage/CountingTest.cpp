#include "usage/Scratch.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <limits>

namespace {

using nlohmann::json;

constexpr const char *small = R"("input_tokens":1000000,"output_tokens":0)";
constexpr const char *zeros = R"("input_tokens":0,"output_tokens":0)";
constexpr const char *forked = R"("forkedFrom":{"sessionId":"s1"},)";
constexpr std::size_t longest = std::size_t {8} << 20U;
constexpr const char *aside = R"("isSidechain":true,)";

/// Checks the statistics of the lines in every order that they can have.
template <typename Check> void inEveryOrder(const std::vector<AnswerLine> &answers, Check check)
{
    std::vector<std::string> lines;
    std::ranges::transform(answers, std::back_inserter(lines), &AnswerLine::line);
    std::ranges::sort(lines);
    do {
        const Scratch scratch;
        scratch.transcript("p/s1.jsonl", lines);
        check(scratch.stats());
    } while (std::next_permutation(lines.begin(), lines.end()));
}

TEST(Counting, knowsEachAnswerOnceInAnyOrderOfLines)
{
    const AnswerLine once;
    const AnswerLine byLine {.id = "", .request = "", .extra = R"("uuid":"u1",)"};
    const struct {
        const char *name;
        std::vector<AnswerLine> lines;
        std::uint64_t answers = 0; // that were counted, each to its end
        std::uint64_t sessions = 1;
        bool isEstimated = false;
    } rows[] = {
        {"growing output", {{.usage = small, .stop = "null"}, once, once}, 1},
        {"asked for twice", {once, {.request = "r2"}}, 2},
        {"without request, joins", {once, {.request = ""}}, 1},
        {"joins one of two", {{.request = "r2"}, once, {.request = ""}}, 2},
        {"only without request", {{.request = ""}, {.request = "", .usage = small}}, 1},
        {"request alone", {{.id = ""}, {.id = ""}}, 1},
        {"request alone is no message id", {{.id = ""}, {.id = "r1", .request = ""}}, 2},
        {"line ids", {byLine, byLine, {.id = "", .request = "", .extra = R"("uuid":"u2",)"}}, 2},
        {"without any id", {{.id = "", .request = ""}}, 0, 0},
        {"fork with history", {{.session = "s0", .extra = forked}, once}, 1},
        {"unfinished subagent", {{.stop = "null", .extra = aside}}, 1, 1, true},
        {"finished later", {{.stop = "null", .extra = aside}, {.extra = aside}}, 1},
        {"told by one line", {{.stop = "null"}, {.stop = "null", .extra = aside}}, 1, 1, true},
        {"no line tells of an end", {{.stop = "7", .extra = aside}}, 1},
        {"errors", {{.extra = R"("isApiErrorMessage":true,)"}, {.model = "<synthetic>"}}, 0, 0},
        {"unknown model", {{.model = "claude-opus-99"}}, 1, 1, true},
        {"without session", {{.session = ""}}, 1, 0},
    };
    for (const auto &row : rows) {
        inEveryOrder(row.lines, [&row](const json &stats) {
            const json &month = stats["totals"]["month"];
            EXPECT_EQ(month["tokens"]["input"], row.answers * 1'000'000) << row.name;
            EXPECT_EQ(month["tokens"]["output"], row.answers * 100'000) << row.name;
            EXPECT_EQ(month["sessions"], row.sessions) << row.name;
            const json &months = stats["months"];
            EXPECT_EQ(!months.empty() && months[0].contains("estimated"), row.isEstimated)
                << row.name;
        });
    }
}

TEST(Counting, asksTheEarliestOfItsOwnLinesWhatAnAnswerIs)
{
    const std::string early = "2026-11-20T09:59:58Z";
    AnswerLine fork {.session = "s9", .time = "2026-11-18T10:00:00Z", .model = "z", .folder = "/z"};
    AnswerLine later = fork;
    later.time = "2026-11-21T10:00:00Z";
    fork.extra = forked;
    const AnswerLine proxy {.session = "", .time = early, .model = "", .usage = zeros};
    const AnswerLine abroad {.time = early, .folder = "", .usage = zeros};
    inEveryOrder({AnswerLine {}, fork, later, proxy, abroad}, [](const json &stats) {
        ASSERT_EQ(stats["sessions"].size(), 1U);
        EXPECT_EQ(stats["sessions"][0]["project"], "proj");
        EXPECT_EQ(stats["days"][0]["date"], "2026-11-20");
        EXPECT_EQ(stats["days"][0]["models"], json::parse(R"({"claude-opus-5-5":6.0})"));
    });
}

/// A line that is this much longer than the usual one.
std::string padded(std::size_t length)
{
    return AnswerLine {.extra = "\"x\":\"" + std::string(length, 'x') + "\","}.line();
}

TEST(Counting, leavesOutWhatCannotBeAndSaysSo)
{
    const std::pair<std::string, std::string> rows[] = {
        {AnswerLine {.usage = R"("cache_creation":{"ephemeral_1h_input_tokens":-1})"}.line(),
            "with impossible numbers"},
        {AnswerLine {.usage = R"("input_tokens":5,"output_tokens":"many")"}.line(),
            "with impossible numbers"},
        {AnswerLine {.usage = R"("output_tokens":[5])"}.line(), "with impossible numbers"},
        {AnswerLine {.time = ""}.line(), "without a possible time"},
        {AnswerLine {.time = "", .extra = R"("timestamp":true,)"}.line(),
            "without a possible time"},
        {AnswerLine {.time = "", .extra = R"("timestamp":1e300,)"}.line(),
            "without a possible time"},
        {AnswerLine {.time = "1999-12-31T23:59:59.999Z"}.line(), "without a possible time"},
        {AnswerLine {.time = "2026-11-23T12:00:00.001Z"}.line(), "without a possible time"},
        {AnswerLine {.time = "2026-11-20T10:00:00"}.line(), "without a possible time"},
        {AnswerLine {.id = "", .request = ""}.line(), "without identity"},
        {AnswerLine {}.line().substr(0, 150), "not JSON"}, {padded(longest), "longer than 8 MiB"}};
    for (const auto &[line, reason] : rows) {
        const Scratch scratch;
        // A byte order mark, line ends of all kinds, and a last line that is still being written.
        scratch.write("claude/projects/p/a.jsonl",
            "\xEF\xBB\xBF" + AnswerLine {.id = "m8"}.line() + "\r\n\n \r\n" + line + '\n'
                + AnswerLine {.id = "m9"}.line());
        usage::History history;
        scratch.update(history);
        EXPECT_EQ(history.skips().sentence(), "skipped 1 line (1 " + reason + ")");
        const json totals = json::parse(statsText(history))["totals"];
        EXPECT_EQ(totals["month"]["tokens"]["input"], 1'000'000) << reason;
    }
}

TEST(Counting, readsNumbersHoweverTheyAreWritten)
{
    const Scratch scratch;
    const std::string texts = R"("input_tokens":"1000000","output_tokens":null)";
    scratch.transcript("p/a.jsonl",
        {R"({"type":"ai-title","sessionId":"s1","aiTitle":"without a time"})",
            AnswerLine {.time = "", .usage = texts, .extra = R"("timestamp":1795168800000,)"}
                .line(),
            AnswerLine {.id = "m2", .time = "", .extra = R"("timestamp":1795168800.5,)"}.line()});
    scratch.rollout("a",
        {R"({"type":"session_meta","payload":{"id":"t1"}})",
            R"({"type":"turn_context","payload":{"model":"gpt-6.2-sol"}})",
            R"({"timestamp":1795168800,"type":"token_usage_record","payload":{"response_id":"r1",)"
            R"("usage":{"input_tokens":"300","output_tokens":1}}})",
            R"({"type":"token_usage_record","payload":{"response_id":"r2","usage":{}}})"});
    usage::History history;
    scratch.update(history);
    const json stats = json::parse(statsText(history));
    EXPECT_EQ(stats["days"][0]["date"], "2026-11-20");
    EXPECT_EQ(stats["days"][0]["tokens"]["input"], 2'000'300);
    EXPECT_EQ(history.skips().sentence(), "skipped 1 line (1 without a possible time)");
}

TEST(Counting, goesOnBeyondTheLargestNumber)
{
    const Scratch scratch;
    std::vector<std::string> lines(2049);
    std::ranges::generate(lines, [i = 0]() mutable {
        return AnswerLine {.id = "m" + std::to_string(++i),
            .usage = R"("input_tokens":9007199254740992,"output_tokens":1)"}
            .line();
    });
    const auto transcript = scratch.transcript("p/a.jsonl", lines);
    const json month = scratch.stats()["totals"]["month"];
    EXPECT_EQ(month["tokens"]["input"], std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(month["tokens"]["output"], 2049);
    EXPECT_NEAR(month["cost"].get<double>(), 2049 * 0x1p53 * 4e-6, 1e3);
}

TEST(Counting, takesTheLongestLineAndTimesJustInside)
{
    const Scratch scratch;
    scratch.transcript("p/a.jsonl",
        {padded(longest - padded(0).size()),
            AnswerLine {.id = "m2", .time = "2000-01-01T00:00:00Z"}.line(),
            AnswerLine {.id = "m3", .time = "2026-11-23T12:00:00Z"}.line()});
    const json stats = scratch.stats();
    EXPECT_EQ(stats["days"].front()["date"], "2000-01-01");
    EXPECT_EQ(stats["days"].back()["date"], "2026-11-23");
    EXPECT_EQ(stats["days"].size(), 9824U);
    EXPECT_EQ(stats["weeks"].size(), 1405U);
    EXPECT_EQ(stats["months"].size(), 323U);
    EXPECT_EQ(stats["totals"]["yesterday"]["tokens"]["input"], 1'000'000);
}

TEST(Counting, givesTheSameBytesForAnyOrderOfFiles)
{
    std::vector<std::pair<std::string, std::vector<std::string>>> files {
        {"p/a.jsonl",
            {prompt(R"("second")", "2026-11-20T08:00:00Z"), AnswerLine {.usage = small}.line(),
                AnswerLine {.id = "m2", .request = ""}.line(),
                R"({"type":"ai-title","aiTitle":"from a","sessionId":"s2"})"}},
        {"p/b.jsonl",
            {prompt(R"("first")", "2026-11-20T07:00:00Z"), AnswerLine {.session = "s2"}.line(),
                AnswerLine {.id = "m2", .request = "r9", .model = "claude-opus-5"}.line(),
                R"({"type":"ai-title","aiTitle":"from b","sessionId":"s2"})"}},
        {"p/c.jsonl",
            {AnswerLine {.id = "m2", .request = "r8", .time = "2026-10-20T10:00:00Z"}.line(),
                AnswerLine {.id = "m4", .session = "s2", .usage = R"("input_tokens":333333)"}
                    .line(),
                AnswerLine {.id = "m5", .model = "nobody's", .usage = R"("input_tokens":1)"}
                    .line()}},
        {"p/d.jsonl",
            {AnswerLine {.session = "s3", .extra = R"("forkedFrom":{},)"}.line(),
                R"({"type":"summary","summary":"sum","leafUuid":"u1"})",
                AnswerLine {.id = "m6", .session = "s3", .extra = R"("uuid":"u1",)"}.line()}},
    };
    std::string expected;
    do {
        const Scratch scratch;
        usage::History history;
        for (const auto &[file, lines] : files) {
            scratch.transcript(file, lines);
            scratch.update(history);
        }
        const std::string text = statsText(history);
        expected = expected.empty() ? text : expected;
        ASSERT_EQ(text, expected);
    } while (std::next_permutation(files.begin(), files.end()));
    EXPECT_EQ(json::parse(expected)["sessions"][0]["title"], "first");
}

} // namespace
