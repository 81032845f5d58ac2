#include "indexer/LimitsFile.h"
#include "indexer/Scratch.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <gtest/gtest.h>

namespace {

using namespace indexer;

using Lines = std::vector<std::string>;

std::string at(int minute, const std::string &rest)
{
    return fmt::format(R"({{"timestamp":"2026-11-20T09:{:02}:00.000Z",{}}})", minute, rest);
}

std::string meta(const std::string &id, const std::string &extra = {}, int minute = 0)
{
    return at(minute,
        fmt::format(R"("type":"session_meta","payload":{{"id":"{}",{}"cwd":"/home/u/{}"}})", id,
            extra, id));
}

std::string forkOf(const std::string &id)
{
    return fmt::format(R"("forked_from_id":"{}",)", id);
}

std::string spawnedBy(const std::string &id)
{
    return fmt::format(
        R"("source":{{"subagent":{{"thread_spawn":{{"parent_thread_id":"{}"}}}}}},)", id);
}

std::string turn(const std::string &id, const std::string &model)
{
    return at(1,
        fmt::format(
            R"("type":"turn_context","payload":{{"turn_id":"{}","model":"{}"}})", id, model));
}

std::string settings(const std::string &model)
{
    return at(1,
        fmt::format(R"("type":"event_msg","payload":{{"type":"thread_settings_applied",)"
                    R"("thread_settings":{{"model":"{}","service_tier":null}}}})",
            model));
}

/// Counts in the order of input, cached, written to the cache and output.
using Counts = std::array<int, 4>;

std::string usage(const Counts &counts)
{
    return fmt::format(R"({{"input_tokens":{},"cached_input_tokens":{},)"
                       R"("cache_write_input_tokens":{},"output_tokens":{}}})",
        counts[0], counts[1], counts[2], counts[3]);
}

std::string total(int minute, const Counts &counts)
{
    return at(minute,
        fmt::format(R"("type":"event_msg","payload":{{"type":"token_count",)"
                    R"("info":{{"total_token_usage":{}}}}})",
            usage(counts)));
}

std::string record(int minute, const std::string &thread, const std::string &response,
    const Counts &counts, const std::string &turn = "t1")
{
    return at(minute,
        fmt::format(R"("type":"token_usage_record","payload":{{"thread_id":"{}","turn_id":"{}",)"
                    R"("response_id":"{}","usage":{}}})",
            thread, turn, response, usage(counts)));
}

/// What was used, as "minute session model fresh/read/written/output", in order.
std::string used(const Scan &scan)
{
    Lines rows;
    scan.rollouts().forEach([&](const UsageRecord &each) {
        const TextPool &names = scan.names();
        rows.push_back(fmt::format("{} {} {} {}/{}/{}/{}", momentText(each.time()).substr(14, 2),
            names.text(each.session.text), names.text(each.model.text), each.usage.input,
            each.usage.cacheRead, each.usage.cacheWrite(), each.usage.output));
    });
    std::sort(rows.begin(), rows.end());
    return fmt::format("{}", fmt::join(rows, ", "));
}

struct File {
    std::string name;
    Lines lines;
};

const std::string first = total(2, {100, 40, 10, 5});
const std::string second = total(3, {300, 140, 10, 15});

TEST(Rollouts, countEveryTokenOnce)
{
    const std::string info =
        at(3, R"("type":"event_msg","payload":{"type":"token_count","info":null})");
    const struct {
        const char *rule;
        std::vector<File> files;
        const char *expected;
    } rows[] = {
        {"totals grow, are repeated, fall and recover",
            {{"a",
                {meta("a"), turn("t1", "m"), info, first, first, total(4, {0, 0, 0, 0}),
                    total(5, {50, 10, 0, 7}), second}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/8, 05 a m 0/0/0/2"},
        {"records go before totals, whose own past counts",
            {{"a",
                {meta("a"), turn("t1", "m"), first, record(3, "a", "r1", {200, 100, 0, 10}), second,
                    record(4, "a", "r1", {200, 100, 0, 10})}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/10"},
        {"a fork holds its parent's totals, stamped anew",
            {{"a", {meta("a"), turn("t1", "m"), first, second}},
                {"b",
                    {meta("b", forkOf("a")), meta("a"), turn("t1", "m"), total(8, {100, 40, 10, 5}),
                        settings("n"), total(8, {300, 140, 10, 15}), turn("t2", "m"),
                        total(9, {400, 140, 10, 20})}},
                {"empty",
                    {meta("empty", forkOf("b")), meta("b", forkOf("a")), total(9, {100, 40, 10, 5}),
                        total(9, {400, 140, 10, 20})}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/10, 09 b m 100/0/0/5"},
        {"forks of a thread whose file is gone share what they copied",
            {{"b", {meta("b", forkOf("a")), meta("a"), turn("t1", "m"), first}},
                {"c", {meta("c", forkOf("a"), 1), turn("t1", "m"), first, second}}},
            "02 b m 50/40/10/5, 03 c m 100/100/0/10"},
        {"a subagent works in its parent's session, and copies are its parent's",
            {{"a", {meta("a"), turn("t1", "m"), record(2, "a", "r1", {100, 40, 10, 5}), first}},
                {"b",
                    {meta("b", spawnedBy("a")), meta("a"), turn("t1", "m"), first,
                        record(3, "b", "r2", {10, 0, 0, 1})}},
                {"c",
                    {meta("c", spawnedBy("b")), record(8, "c", "r1", {100, 40, 10, 5}),
                        turn("t9", "n"), record(4, "c", "r3", {20, 0, 0, 2})}}},
            "02 a m 50/40/10/5, 03 a m 10/0/0/1, 04 a n 20/0/0/2"},
        {"threads that are not related may have equal counts",
            {{"a", {meta("a"), turn("t1", "m"), first}},
                {"b", {meta("b"), turn("t1", "m"), first}}},
            "02 a m 50/40/10/5, 02 b m 50/40/10/5"},
        {"a response has the model of its own turn, as changed last",
            {{"a",
                {meta("a"), settings("z"), turn("t1", "m"), settings("n"),
                    record(2, "a", "r1", {1, 0, 0, 1}), turn("t2", "o"),
                    record(3, "a", "r2", {2, 0, 0, 2}), record(4, "a", "r3", {3, 0, 0, 3}, "t2"),
                    record(5, "a", "r4", {4, 0, 0, 4}, "untold"),
                    record(6, "a", "r5", {5, 0, 0, 5}, "")}}},
            "02 a n 1/0/0/1, 03 a n 2/0/0/2, 04 a o 3/0/0/3, 05 a o 4/0/0/4, 06 a o 5/0/0/5"},
    };
    for (const auto &row : rows) {
        const Scratch scratch;
        for (const File &file : row.files) {
            scratch.rollout(file.name, file.lines);
        }
        Scan scan(testNow());
        scan.addCodex(scratch.codex());
        EXPECT_EQ(used(scan), row.expected) << row.rule;
        EXPECT_EQ(scan.skips().sentence(), "") << row.rule;
    }
}

/// A line that tells of limits, and of a total if there is one.
std::string limits(int minute, const std::string &fields, const Counts &total = {})
{
    return at(minute,
        fmt::format(R"("type":"event_msg","payload":{{"type":"token_count",)"
                    R"("info":{{"total_token_usage":{}}},"rate_limits":{{{}}}}})",
            usage(total), fields));
}

const std::string weekly =
    R"("primary":{"used_percent":55.5,"window_minutes":10080,"resets_at":1795600000})";
const std::string both =
    weekly + R"(,"secondary":{"used_percent":105,"window_minutes":300,"resets_in_seconds":60})";

TEST(Rollouts, giveTheNewestLimitsThatAreNoCopy)
{
    const char *const weeklyJson =
        R"("primary":{"percent":55.5,"minutes":10080.0,"resetsAt":"2026-11-25T09:46:40.000Z"})";
    const struct {
        const char *rule;
        std::vector<File> files;
        std::string expected;
    } rows[] = {
        {"none are told", {{"a", {meta("a"), first, limits(3, R"("primary":null)")}}}, {}},
        {"the shorter window comes first, wherever it stood",
            {{"a", {meta("a"), limits(3, both + R"(,"plan_type":"pro")")}},
                {"b", {meta("b"), limits(2, weekly)}}},
            R"({"primary":{"percent":105.0,"minutes":300.0,"resetsAt":"2026-11-20T09:04:00.000Z"},)"
            R"("secondary":{"percent":55.5,"minutes":10080.0,)"
            R"("resetsAt":"2026-11-25T09:46:40.000Z"},)"
            R"("updatedAt":"2026-11-20T09:03:00.000Z","plan":"pro"})"},
        {"other limits and windows without length do not count",
            {{"a",
                {meta("a"), limits(3, weekly + R"(,"limit_id":"codex")"),
                    limits(4, both + R"(,"limit_id":"premium")"),
                    limits(5, R"("primary":{"used_percent":0})")}}},
            fmt::format(R"({{{},"updatedAt":"2026-11-20T09:03:00.000Z"}})", weeklyJson)},
        {"what a fork copied is as old as its original",
            {{"a", {meta("a"), limits(3, weekly, {100, 0, 0, 0})}},
                {"b", {meta("b", forkOf("a")), limits(9, both, {100, 0, 0, 0})}}},
            fmt::format(R"({{{},"updatedAt":"2026-11-20T09:03:00.000Z"}})", weeklyJson)},
        {"also when the original has gone",
            {{"b", {meta("b", forkOf("a")), limits(9, both, {100, 0, 0, 0})}}}, {}},
        {"and what it wrote itself counts",
            {{"a", {meta("a"), limits(3, both, {100, 0, 0, 0})}},
                {"b",
                    {meta("b", forkOf("a")), limits(8, both, {100, 0, 0, 0}),
                        limits(9, weekly, {200, 0, 0, 0})}}},
            fmt::format(R"({{{},"updatedAt":"2026-11-20T09:09:00.000Z"}})", weeklyJson)},
    };
    for (const auto &row : rows) {
        const Scratch scratch;
        for (const File &file : row.files) {
            scratch.rollout(file.name, file.lines);
        }
        Scan scan(testNow());
        scan.addCodex(scratch.codex());
        const auto newest = scan.rollouts().limits();
        EXPECT_EQ(newest ? limitsJson(*newest) : "\n", row.expected + '\n') << row.rule;
    }
}

TEST(Rollouts, areReadCompressedAndOnceForEachThread)
{
    const Scratch scratch;
    const auto archive = scratch.codex() / "archived_sessions";
    // A compressed file beside its plain one, one alone, a moved older state, a torn one, and one
    // that unpacks to more than it can hold.
    scratch.rollout("a", {meta("a"), turn("t1", "m"), first, second});
    scratch.rollout("b", {meta("b"), turn("t1", "n"), first});
    scratch.rollout("torn", {meta("torn"), turn("t1", "m"), first});
    const std::string folder = (scratch.codex() / "sessions").native();
    const std::string command = fmt::format("cd '{}' && zstd -q rollout-a.jsonl rollout-torn.jsonl"
                                            " && zstd -q --rm rollout-b.jsonl"
                                            " && truncate -s -9 rollout-torn.jsonl.zst"
                                            " && rm rollout-torn.jsonl"
                                            " && head -c 100M /dev/zero | tr '\\0' x"
                                            " | zstd -q > rollout-bomb.jsonl.zst",
        folder);
    ASSERT_EQ(std::system(command.c_str()), 0);
    scratch.write(
        archive / "rollout-old-a.jsonl", meta("a") + '\n' + turn("t1", "m") + '\n' + first + '\n');
    Scan scan(testNow());
    scan.addCodex(scratch.codex());
    EXPECT_EQ(used(scan), "02 a m 50/40/10/5, 02 b n 50/40/10/5, 03 a m 100/100/0/10");
    EXPECT_EQ(scan.files(), 5U);
    EXPECT_EQ(scan.skips().count(FileSkip::Unreadable), 2U);
}

} // namespace
