#include "indexer/Scratch.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>

namespace {

using nlohmann::json;

constexpr const char *small = R"("input_tokens":1000000,"output_tokens":0)";

struct Case {
    const char *name;
    std::vector<std::string> lines;
    std::uint64_t input = 0;  // in millions
    std::uint64_t output = 0; // in tens of thousands
    std::uint64_t sessions = 0;
    bool isEstimated = false;
};

std::vector<Case> identities()
{
    const Answer once;
    return {
        {"one line", {once.line()}, 1, 10, 1},
        {"repeated blocks, growing output",
            {Answer {.usage = small, .stop = "null"}.line(), once.line(), once.line()}, 1, 10, 1},
        {"placeholder of zeros first",
            {Answer {.usage = R"("input_tokens":0,"output_tokens":0)"}.line(), once.line()}, 1, 10,
            1},
        {"another message", {once.line(), Answer {.id = "m2"}.line()}, 2, 20, 1},
        {"one message asked for twice", {once.line(), Answer {.request = "r2"}.line()}, 2, 20, 1},
        {"line without request joins", {once.line(), Answer {.request = ""}.line()}, 1, 10, 1},
        {"line without request joins the first of two",
            {Answer {.request = "r2", .usage = R"("input_tokens":1000000,"output_tokens":50000)"}
                    .line(),
                Answer {.request = "r1", .usage = small}.line(), Answer {.request = ""}.line()},
            2, 15, 1},
        {"only lines without request",
            {Answer {.request = ""}.line(), Answer {.request = "", .usage = small}.line()}, 1, 10,
            1},
        {"request alone", {Answer {.id = ""}.line(), Answer {.id = ""}.line()}, 1, 10, 1},
        {"request alone is no message id",
            {Answer {.id = ""}.line(), Answer {.id = "r1", .request = ""}.line()}, 2, 20, 1},
        {"line ids",
            {Answer {.id = "", .request = "", .extra = R"("uuid":"u1",)"}.line(),
                Answer {.id = "", .request = "", .extra = R"("uuid":"u1",)"}.line(),
                Answer {.id = "", .request = "", .extra = R"("uuid":"u2",)"}.line()},
            2, 20, 1},
        {"without any id", {Answer {.id = "", .request = ""}.line()}, 0, 0, 0},
        {"a fork copies history into another session",
            {Answer {.session = "s0", .extra = R"("forkedFrom":{"sessionId":"s1"},)"}.line(),
                once.line()},
            1, 10, 1},
    };
}

std::vector<Case> circumstances()
{
    const Answer once;
    return {
        {"subagents count to their session",
            {once.line(), Answer {.id = "m2", .extra = R"("isSidechain":true,)"}.line()}, 2, 20, 1},
        {"a subagent's answer was not finished",
            {Answer {.stop = "null", .extra = R"("isSidechain":true,)"}.line()}, 1, 10, 1, true},
        {"a subagent's answer was finished by a later line",
            {Answer {.stop = "null", .extra = R"("isSidechain":true,)"}.line(),
                Answer {.extra = R"("isSidechain":true,)"}.line()},
            1, 10, 1},
        {"one line tells that the unfinished answer is a subagent's",
            {Answer {.stop = "null"}.line(),
                Answer {.stop = "null", .extra = R"("isSidechain":true,)"}.line()},
            1, 10, 1, true},
        {"one line tells the model", {once.line(), Answer {.model = ""}.line()}, 1, 10, 1},
        {"a subagent's answer, and no line tells whether it was finished",
            {Answer {.stop = "7", .extra = R"("isSidechain":true,)"}.line()}, 1, 10, 1},
        {"an unfinished answer in the main line", {Answer {.stop = "null"}.line()}, 1, 10, 1},
        {"errors and local messages",
            {Answer {.extra = R"("isApiErrorMessage":true,)"}.line(),
                Answer {.model = "<synthetic>"}.line()},
            0, 0, 0},
        {"unknown model", {Answer {.model = "claude-opus-99"}.line()}, 1, 10, 1, true},
        {"without session", {Answer {.session = ""}.line()}, 1, 10, 0},
        {"without time", {Answer {.time = ""}.line()}, 0, 0, 0},
    };
}

TEST(Counting, knowsEachAnswerOnceInAnyOrderOfLines)
{
    std::vector<Case> cases = identities();
    const std::vector<Case> more = circumstances();
    cases.insert(cases.end(), more.begin(), more.end());
    for (Case &c : cases) {
        std::sort(c.lines.begin(), c.lines.end());
        do {
            const Scratch scratch;
            scratch.transcript("p/s1.jsonl", c.lines);
            const json month = scratch.stats()["totals"]["month"];
            EXPECT_EQ(month["tokens"]["input"], c.input * 1'000'000) << c.name;
            EXPECT_EQ(month["tokens"]["output"], c.output * 10'000) << c.name;
            EXPECT_EQ(month["sessions"], c.sessions) << c.name;
            const json months = scratch.stats()["months"];
            EXPECT_EQ(!months.empty() && months[0].contains("estimated"), c.isEstimated) << c.name;
        } while (std::next_permutation(c.lines.begin(), c.lines.end()));
    }
}

TEST(Counting, datesAnAnswerByItsOwnEarliestLine)
{
    const Scratch scratch;
    scratch.transcript("p/s1.jsonl",
        {Answer {.time = "2026-11-19T10:00:00Z"}.line(),
            Answer {.time = "2026-11-20T10:00:00Z"}.line(),
            Answer {.session = "s0", .time = "2026-11-18T10:00:00Z", .extra = R"("forkedFrom":{},)"}
                .line()});
    const json stats = scratch.stats();
    EXPECT_EQ(stats["days"][0]["date"], "2026-11-19");
    EXPECT_EQ(stats["sessions"].size(), 1U);
    EXPECT_EQ(stats["totals"]["yesterday"]["tokens"]["total"], 0);
}

TEST(Counting, asksAllLinesOfAnAnswerWhoseItIs)
{
    const std::string early = "2026-11-20T09:59:58Z";
    const std::string forked = R"("forkedFrom":{},)";
    const Answer zeros {.time = early, .usage = R"("input_tokens":0,"output_tokens":0)"};
    const auto without = [&zeros](std::string Answer::*field) {
        Answer line = zeros;
        line.*field = "";
        return line.line();
    };
    Answer untold = zeros;
    untold.model = untold.session = untold.folder = "";
    const std::string usual = Answer {}.line();
    const std::string copied =
        Answer {.session = "s0", .model = "other", .folder = "/other", .extra = forked}.line();
    std::vector<std::string> cases[] = {
        {usual, copied, without(&Answer::model), without(&Answer::session),
            without(&Answer::folder)},
        {usual, copied, untold.line(),
            Answer {.session = "s9", .time = "2026-11-20T10:00:01Z", .model = "z", .folder = "/z"}
                .line()},
    };
    for (auto &lines : cases) {
        std::sort(lines.begin(), lines.end());
        do {
            const Scratch scratch;
            scratch.transcript("p/s1.jsonl", lines);
            const json stats = scratch.stats();
            ASSERT_EQ(stats["sessions"].size(), 1U);
            EXPECT_EQ(stats["sessions"][0]["project"], "proj");
            EXPECT_EQ(stats["days"][0]["models"], json::parse(R"({"claude-opus-5-5":6.0})"));
        } while (std::next_permutation(lines.begin(), lines.end()));
    }
}

TEST(Counting, isQuickForOneMessageOfManyRequests)
{
    using namespace std::chrono;
    indexer::TextPool names;
    indexer::Ledger ledger(names);
    const auto start = steady_clock::now();
    constexpr int requests = 200'000;
    for (int i = 0; i < 2 * requests; ++i) {
        const std::string request = "r" + std::to_string(i % requests);
        indexer::TranscriptLine line;
        line.requestId = request;
        line.messageId = "m1";
        line.usage.input = i < requests ? 1 : 2;
        ASSERT_TRUE(ledger.add(line, testNow()));
    }
    std::uint64_t input = 0;
    ledger.forEach([&input](const indexer::UsageRecord &record) { input += record.usage.input; });
    EXPECT_EQ(input, 2 * requests);
    // Far more than is needed, far less than a walk over all requests for each line.
    EXPECT_LT(steady_clock::now() - start, 10s);
}

TEST(Counting, leavesOutWhatCannotBeAndSaysSo)
{
    using indexer::LineSkip;
    const struct {
        const char *name;
        std::string line;
        LineSkip reason;
    } rows[] = {
        {"negative", Answer {.usage = R"("input_tokens":5,"output_tokens":-1)"}.line(),
            LineSkip::ImpossibleNumbers},
        {"beyond all numbers",
            Answer {.usage = R"("cache_creation":{"ephemeral_1h_input_tokens":1e999})"}.line(),
            LineSkip::ImpossibleNumbers},
        {"the last millennium", Answer {.time = "1999-12-31T23:59:59.999Z"}.line(),
            LineSkip::ImpossibleTime},
        {"the future", Answer {.time = "2026-11-23T12:00:00.001Z"}.line(),
            LineSkip::ImpossibleTime},
        {"no zone", Answer {.time = "2026-11-20T10:00:00"}.line(), LineSkip::ImpossibleTime},
        {"no identity", Answer {.id = "", .request = ""}.line(), LineSkip::NoIdentity},
        {"cut off", Answer {}.line().substr(0, 150), LineSkip::NotJson},
        {"more behind it", Answer {}.line() + "x", LineSkip::NotJson},
        {"too long",
            Answer {.extra = "\"x\":\"" + std::string(std::size_t {8} << 20U, 'x') + "\","}.line(),
            LineSkip::TooLong},
    };
    for (const auto &row : rows) {
        const Scratch scratch;
        const auto file = scratch.transcript("p/a.jsonl", {row.line, Answer {.id = "m9"}.line()});
        indexer::Scan scan(testNow());
        scan.addFile(file);
        EXPECT_EQ(scan.skips().count(row.reason), 1U) << row.name;
        const json totals = json::parse(statsText(scan))["totals"];
        EXPECT_EQ(totals["month"]["tokens"]["input"], 1'000'000) << row.name;
    }
}

TEST(Counting, takesTheLongestLineAndTimesJustInside)
{
    const std::size_t longest = std::size_t {8} << 20U;
    const auto padded = [](std::size_t length) {
        return Answer {.extra = "\"x\":\"" + std::string(length, 'x') + "\","};
    };
    const std::size_t rest = padded(0).line().size();
    const Scratch scratch;
    scratch.transcript("p/a.jsonl",
        {padded(longest - rest).line(), Answer {.id = "m2", .time = "2000-01-01T00:00:00Z"}.line(),
            Answer {.id = "m3", .time = "2026-11-23T12:00:00Z"}.line()});
    const json days = scratch.stats()["days"];
    EXPECT_EQ(days.front()["date"], "2000-01-01");
    EXPECT_EQ(days.back()["date"], "2026-11-23");
    EXPECT_EQ(days.size(), 9824U);
    EXPECT_EQ(scratch.stats()["totals"]["yesterday"]["tokens"]["input"], 1'000'000);
}

TEST(Counting, readsLinesAsTheyAreWritten)
{
    const Scratch scratch;
    const std::string whole = Answer {}.line();
    scratch.write("claude/projects/p/mark.jsonl", "\xEF\xBB\xBF" + whole + "\r\n\n \r\n");
    scratch.write("claude/projects/p/torn.jsonl",
        Answer {.id = "m2"}.line() + '\n' + Answer {.id = "m3"}.line());
    indexer::Scan scan(testNow());
    scan.addClaude(scratch.claude());
    EXPECT_EQ(json::parse(statsText(scan))["totals"]["month"]["tokens"]["input"], 2'000'000);
    EXPECT_EQ(scan.skips().sentence(), "");
}

TEST(Counting, givesTheSameBytesForAnyOrderOfFiles)
{
    const Scratch scratch;
    std::vector<std::filesystem::path> files {
        scratch.transcript("p/a.jsonl",
            {prompt(R"("second")", "2026-11-20T08:00:00Z"), Answer {.usage = small}.line(),
                Answer {.id = "m2", .request = ""}.line(),
                R"({"type":"ai-title","aiTitle":"from a","sessionId":"s2"})"}),
        scratch.transcript("p/b.jsonl",
            {prompt(R"("first")", "2026-11-20T07:00:00Z"), Answer {.session = "s2"}.line(),
                Answer {.id = "m2", .request = "r9", .model = "claude-opus-5"}.line(),
                R"({"type":"ai-title","aiTitle":"from b","sessionId":"s2"})"}),
        scratch.transcript("p/c.jsonl",
            {Answer {.id = "m2", .request = "r8", .time = "2026-10-20T10:00:00Z"}.line(),
                Answer {.id = "m4", .session = "s2", .usage = R"("input_tokens":333333)"}.line(),
                Answer {.id = "m5", .model = "nobody's", .usage = R"("input_tokens":1)"}.line()}),
        scratch.transcript("p/d.jsonl",
            {Answer {.session = "s3", .extra = R"("forkedFrom":{},)"}.line(),
                R"({"type":"summary","summary":"sum","leafUuid":"u1"})",
                Answer {.id = "m6", .session = "s3", .extra = R"("uuid":"u1",)"}.line()}),
    };
    std::string expected;
    do {
        indexer::Scan scan(testNow());
        for (const auto &file : files) {
            scan.addFile(file);
        }
        const std::string text = statsText(scan);
        expected = expected.empty() ? text : expected;
        ASSERT_EQ(text, expected);
    } while (std::next_permutation(files.begin(), files.end()));
    const json sessions = json::parse(expected)["sessions"];
    ASSERT_EQ(sessions.size(), 3U);
    EXPECT_EQ(sessions[0]["title"], "first");
    EXPECT_EQ(sessions[1]["title"], "from b");
    EXPECT_EQ(sessions[2]["title"], "sum");
}

TEST(Counting, survivesSumsBeyondAllNumbers)
{
    std::vector<std::string> lines;
    lines.reserve(3000);
    for (int i = 0; i < 3000; ++i) {
        lines.push_back(
            Answer {.id = "m" + std::to_string(i), .usage = R"("output_tokens":9007199254740992)"}
                .line());
    }
    const Scratch scratch;
    scratch.transcript("p/a.jsonl", lines);
    const json month = scratch.stats()["totals"]["month"];
    EXPECT_EQ(month["tokens"]["output"], UINT64_MAX);
    EXPECT_EQ(month["tokens"]["total"], UINT64_MAX);
    EXPECT_DOUBLE_EQ(month["cost"].get<double>(), 3000 * 9007199254740992.0 * 20e-6);
}

} // namespace
