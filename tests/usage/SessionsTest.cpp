#include "usage/Scratch.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

namespace {

using nlohmann::json;

constexpr const char *early = "2026-11-20T08:00:00Z";

const std::string custom = R"({"type":"custom-title","customTitle":"custom","sessionId":"s1"})";
const std::string agent = R"({"type":"agent-name","agentName":"agent","sessionId":"s1"})";
const std::string byAi = R"({"type":"ai-title","aiTitle":"by ai","sessionId":"s1"})";
const std::string summary = R"({"type":"summary","summary":"summed","leafUuid":"u7"})";
const std::string leaf = prompt(R"("asked")", early, R"("uuid":"u7",)");

TEST(Sessions, takeTheBestTitle)
{
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{custom, agent, byAi, summary, leaf}, "custom"}, {{byAi, agent, summary, leaf}, "agent"},
        {{leaf, byAi, summary}, "by ai"},
        // An empty title and one of a wrong type do not count.
        {{byAi, R"({"type":"custom-title","customTitle":" \n","sessionId":"s1"})"}, "by ai"},
        {{byAi, R"({"type":"custom-title","customTitle":5,"sessionId":"s1"})"}, "by ai"},
        {{R"({"type":"summary","summary":"of nothing here","leafUuid":"u8"})", leaf}, "asked"},
        // The summary of the latest line, which may be one of the system's.
        {{R"({"type":"summary","summary":"after it","leafUuid":"u9"})",
             R"({"type":"system","sessionId":"s1","timestamp":"2026-11-20T09:30:00Z","uuid":"u9"})",
             summary, leaf},
            "after it"},
        {{prompt(R"([{"type":"image"},{"type":"text","text":"<ide_selection>x"},)"
                 R"({"text":"look\nat this","type":"text"}])",
             early)},
            "look at this"},
        // Nothing that the user wrote.
        {{prompt(R"("m")", early, R"("isMeta":true,)"),
             prompt(R"([{"type":"tool_result","content":"t"},{"type":"text","text":"t"}])", early),
             prompt(R"("<command-name>/clear</command-name>")", early), prompt("5", early)},
            ""}};
    for (const auto &[lines, title] : rows) {
        const Scratch scratch;
        scratch.transcript("p/s0.jsonl", {AnswerLine {}.line()});
        scratch.transcript("p/s1.jsonl", lines);
        const json sessions = scratch.stats()["sessions"];
        ASSERT_EQ(sessions.size(), 1U) << title;
        EXPECT_EQ(sessions[0].value("title", ""), title);
    }
}

TEST(Sessions, preferTheTitleInTheirOwnFile)
{
    const auto title = [](const char *text) {
        return R"({"type":"ai-title","sessionId":"s1","aiTitle":")" + std::string(text) + "\"}";
    };
    const Scratch scratch;
    scratch.transcript("p/zz.jsonl", {title("last path")});
    scratch.transcript("p/a.jsonl", {AnswerLine {}.line(), title("first path")});
    EXPECT_EQ(scratch.stats()["sessions"][0]["title"], "last path");
    scratch.transcript("p/s1.jsonl", {title("own"), title("own, newer")});
    EXPECT_EQ(scratch.stats()["sessions"][0]["title"], "own, newer");
}

TEST(Sessions, tellProjectEndAndSpending)
{
    const std::string untold = AnswerLine {.time = "2026-11-20T06:00:00Z", .folder = ""}.line();
    const std::string typed = prompt(R"("x")", early, R"("cwd":"/w/typed",)");
    const Scratch scratch;
    scratch.transcript("-slug-of-nothing/s1.jsonl", {untold});
    EXPECT_FALSE(scratch.stats()["sessions"][0].contains("project"));
    // The folder of the first answer that has one, else that of the first prompt.
    scratch.transcript("-slug-of-nothing/s1.jsonl",
        {untold, prompt(R"("x")", "2026-11-20T11:00:00.5+01:00", R"("cwd":"/w/later",)"), typed,
            prompt(R"("copied")", "2026-11-20T15:00:00Z", R"("forkedFrom":{"sessionId":"s0"},)")});
    EXPECT_EQ(scratch.stats()["sessions"][0]["project"], "typed");
    scratch.transcript("p/b.jsonl", {AnswerLine {.id = "m2"}.line()});
    EXPECT_EQ(scratch.stats()["sessions"][0],
        json::parse(R"({"title":"x","project":"proj","end":"2026-11-20T10:00:00.500Z","cost":12.0,)"
                    R"("tokens":{"input":2000000,"output":200000,"cacheWrite":0,"total":2200000},)"
                    R"("provider":"claude"})"));
}

TEST(Sessions, areTheNewestOnly)
{
    const Scratch scratch;
    std::vector<std::string> lines;
    for (int i = 100; i < 330; ++i) {
        const std::string n = std::to_string(i);
        lines.push_back(
            AnswerLine {.id = n, .session = n, .time = "2026-11-20T10:00:00." + n + "Z"}.line());
    }
    scratch.transcript("p/a.jsonl", lines);
    const json stats = scratch.stats();
    ASSERT_EQ(stats["sessions"].size(), 200U);
    EXPECT_EQ(stats["sessions"][0]["end"], "2026-11-20T10:00:00.329Z");
    EXPECT_EQ(stats["sessions"][199]["end"], "2026-11-20T10:00:00.130Z");
    EXPECT_EQ(stats["totals"]["yesterday"]["sessions"], 230);
}

/// The files below a folder, whatever is in them.
std::set<std::string> filesIn(const std::filesystem::path &folder)
{
    std::set<std::string> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        files.insert(entry.path().filename());
    }
    return files;
}

TEST(Sessions, ofCodexTakeTheTitleInItsDatabase)
{
    const Scratch scratch;
    const auto line = [](const std::string &type, const std::string &payload) {
        return R"({"timestamp":"2026-11-20T09:00:00Z","type":")" + type + R"(","payload":{)"
            + payload + "}}";
    };
    scratch.rollout("a",
        {line("session_meta", R"("id":"t1")"),
            line("event_msg", R"("type":"user_message","message":"Do  it")"),
            line("token_usage_record", R"("response_id":"r1","usage":{"output_tokens":1})")});
    usage::History history;
    const auto title = [&] {
        const auto before = filesIn(scratch.codex());
        scratch.update(history);
        EXPECT_EQ(filesIn(scratch.codex()), before) << "nothing is left there";
        return json::parse(statsText(history))["sessions"][0]["title"].get<std::string>();
    };
    const std::string set = "; INSERT OR REPLACE INTO threads VALUES ('t1', ";
    const std::string fresh = "CREATE TABLE threads (id TEXT PRIMARY KEY, title TEXT)" + set;
    const std::pair<const char *, std::string> steps[] = {
        {"state_5.sqlite", fresh + "'Do  it')"}, // is what the user wrote first
        {"state_10.sqlite", fresh + "'Renamed')"}, {"state_9.sqlite", fresh + "'Old')"},
        {"state_10.sqlite", "PRAGMA journal_mode = WAL" + set + "'Later')"},
        {"state_11.sqlite", "CREATE VIEW threads AS SELECT 't1' AS id, 'Odd' AS title"}};
    std::string titles;
    for (const auto &[name, sql] : steps) {
        usage::Database(scratch.codex() / name).run(sql);
        titles += title() + '|';
    }
    EXPECT_EQ(titles, "Do it|Renamed|Renamed|Later|Later|");
    std::filesystem::remove(scratch.codex() / "state_11.sqlite");
    {
        // While it is being written: in its journal, and beyond reach.
        usage::Database open(scratch.codex() / "state_10.sqlite");
        open.run("PRAGMA journal_mode = WAL" + set + "'Now')");
        EXPECT_EQ(title(), "Now");
        open.run("PRAGMA journal_mode = DELETE; BEGIN EXCLUSIVE" + set + "'Not yet')");
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(title(), "Now");
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds {5});
    }
    // A name in the thread's file counts less than a title, unless that is the prompt.
    const std::string named =
        line("event_msg", R"("type":"thread_name_updated","thread_name":"Named")");
    std::ofstream(scratch.codex() / "sessions/rollout-a.jsonl", std::ios::app) << named << '\n';
    EXPECT_EQ(title(), "Now");
    usage::Database(scratch.codex() / "state_10.sqlite").run("SELECT 1" + set + "'Do  it')");
    EXPECT_EQ(title(), "Named");
    scratch.write("codex/state_12.sqlite", std::string(5000, 'x'));
    EXPECT_EQ(title(), "Named");
}

} // namespace
