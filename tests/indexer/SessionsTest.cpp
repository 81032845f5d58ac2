#include "indexer/Scratch.h"

#include <gtest/gtest.h>

namespace {

using nlohmann::json;

constexpr const char *early = "2026-11-20T08:00:00Z";
constexpr const char *late = "2026-11-20T09:00:00Z";

const std::string custom = R"({"type":"custom-title","customTitle":"custom","sessionId":"s1"})";
const std::string agent = R"({"type":"agent-name","agentName":"agent","sessionId":"s1"})";
const std::string byAi = R"({"type":"ai-title","aiTitle":"by ai","sessionId":"s1"})";
const std::string summary = R"({"type":"summary","summary":"summed","leafUuid":"u7"})";
const std::string leaf = prompt(R"("asked")", early, R"("uuid":"u7",)");

TEST(Sessions, takeTheBestTitle)
{
    const struct {
        const char *name;
        std::vector<std::string> lines;
        std::string title; // empty: none
    } rows[] = {
        {"custom before all", {custom, agent, byAi, summary, leaf}, "custom"},
        {"agent", {byAi, agent, summary, leaf}, "agent"},
        {"by the assistant", {leaf, byAi, summary}, "by ai"},
        {"the last of a kind", {byAi, R"({"type":"ai-title","aiTitle":"newer","sessionId":"s1"})"},
            "newer"},
        {"an empty one does not count",
            {byAi, R"({"type":"custom-title","customTitle":" \n","sessionId":"s1"})"}, "by ai"},
        {"a wrong type does not count",
            {byAi, R"({"type":"custom-title","customTitle":5,"sessionId":"s1"})"}, "by ai"},
        {"summary", {summary, leaf}, "summed"},
        {"summary of nothing here", {R"({"type":"summary","summary":"x","leafUuid":"u8"})", leaf},
            "asked"},
        {"summary of the latest line",
            {summary, leaf, R"({"type":"summary","summary":"a later line's","leafUuid":"u8"})",
                prompt(R"("more")", late, R"("uuid":"u8",)")},
            "a later line's"},
        {"summary of a line of the system",
            {summary, leaf, R"({"type":"summary","summary":"after it","leafUuid":"u9"})",
                R"({"type":"system","sessionId":"s1","timestamp":"2026-11-20T09:30:00Z","uuid":"u9"})"},
            "after it"},
        {"earliest prompt", {prompt(R"("later")", late), prompt(R"("earlier")", early)}, "earlier"},
        {"prompt in parts",
            {prompt(R"([{"type":"image"},{"type":"text","text":"<ide_selection>x"},)"
                    R"({"text":"look\nat this","type":"text"}])",
                early)},
            "look at this"},
        {"nothing that the user wrote",
            {prompt(R"("m")", early, R"("isMeta":true,)"),
                prompt(R"("c")", early, R"("isCompactSummary":true,)"),
                prompt(R"("s")", early, R"("isSidechain":true,)"),
                prompt(
                    R"([{"type":"tool_result","content":"t"},{"type":"text","text":"t"}])", early),
                prompt(R"("<command-name>/clear</command-name>")", early), prompt("5", early)},
            ""},
    };
    for (const auto &row : rows) {
        const Scratch scratch;
        auto lines = row.lines;
        lines.push_back(Answer {}.line());
        scratch.transcript("p/s1.jsonl", lines);
        const json sessions = scratch.stats()["sessions"];
        ASSERT_EQ(sessions.size(), 1U) << row.name;
        EXPECT_EQ(sessions[0].value("title", ""), row.title) << row.name;
    }
}

TEST(Sessions, preferTheTitleInTheirOwnFile)
{
    const Scratch scratch;
    const auto title = [](const std::string &text) {
        return R"({"type":"ai-title","sessionId":"s1","aiTitle":")" + text + "\"}";
    };
    scratch.transcript("p/zz.jsonl", {title("last path")});
    scratch.transcript("p/a.jsonl", {Answer {}.line(), title("first path")});
    EXPECT_EQ(scratch.stats()["sessions"][0]["title"], "last path");
    scratch.transcript("p/s1.jsonl", {title("own"), title("own, newer")});
    EXPECT_EQ(scratch.stats()["sessions"][0]["title"], "own, newer");
}

TEST(Sessions, tellProjectEndAndSpending)
{
    const Scratch scratch;
    scratch.transcript("-slug-of-nothing/s1.jsonl",
        {Answer {}.line(), prompt(R"("x")", "2026-11-20T11:00:00.5+01:00"),
            prompt(R"("copied")", "2026-11-20T15:00:00Z", R"("forkedFrom":{"sessionId":"s0"},)"),
            Answer {.id = "m2", .session = "s2", .time = late}.line()});
    const json sessions = scratch.stats()["sessions"];
    ASSERT_EQ(sessions.size(), 2U);
    EXPECT_EQ(sessions[0],
        json::parse(R"({"title":"x","project":"proj","end":"2026-11-20T10:00:00.500Z","cost":6.0,)"
                    R"("tokens":{"input":1000000,"output":100000,"cacheWrite":0,"total":1100000},)"
                    R"("provider":"claude"})"));
    EXPECT_EQ(sessions[1]["end"], "2026-11-20T09:00:00.000Z");
    EXPECT_FALSE(sessions[1].contains("title"));
}

TEST(Sessions, areNamedAfterTheFolderOfTheirFirstAnswer)
{
    const std::string typed = prompt(R"("x")", "2026-11-20T07:00:00Z", R"("cwd":"/w/typed",)");
    const std::string untold = Answer {.time = "2026-11-20T06:00:00Z", .folder = ""}.line();
    const struct {
        std::vector<std::string> lines;
        const char *project; // nullptr: none
    } rows[] = {
        {{Answer {.id = "m2", .time = late, .folder = "/w/second"}.line(),
             Answer {.id = "m3", .time = early, .folder = R"(C:\\w\\first)"}.line(), untold, typed},
            "first"},
        {{untold, prompt(R"("x")", late, R"("cwd":"/w/later",)"), typed}, "typed"},
        {{untold}, nullptr},
    };
    for (const auto &row : rows) {
        const Scratch scratch;
        scratch.transcript("p/a.jsonl", row.lines);
        const json sessions = scratch.stats()["sessions"];
        ASSERT_EQ(sessions.size(), 1U);
        EXPECT_EQ(sessions[0].contains("project"), row.project != nullptr);
        EXPECT_EQ(sessions[0].value("project", ""), row.project == nullptr ? "" : row.project);
    }
}

TEST(Sessions, areTheNewestOnly)
{
    const Scratch scratch;
    std::vector<std::string> lines;
    for (int i = 0; i < 230; ++i) {
        const std::string number = std::to_string(100 + i);
        lines.push_back(Answer {.id = "m" + number,
            .session = "s" + number,
            .time = "2026-11-20T10:00:00." + number + "Z"}
                            .line());
    }
    scratch.transcript("p/a.jsonl", lines);
    const json stats = scratch.stats();
    ASSERT_EQ(stats["sessions"].size(), 200U);
    EXPECT_EQ(stats["sessions"][0]["end"], "2026-11-20T10:00:00.329Z");
    EXPECT_EQ(stats["sessions"][199]["end"], "2026-11-20T10:00:00.130Z");
    EXPECT_EQ(stats["totals"]["yesterday"]["sessions"], 230);
}

} // namespace
