#include "indexer/LimitsFile.h"
#include "indexer/LineReader.h"
#include "indexer/RolloutBook.h"
#include "indexer/RolloutPacking.h"
#include "indexer/RolloutParser.h"
#include "indexer/RolloutReader.h"
#include "indexer/Scratch.h"
#include "indexer/TranscriptTree.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <functional>
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

std::string settings(const std::string &fields)
{
    return at(1,
        fmt::format(R"("type":"event_msg","payload":{{"type":"thread_settings_applied",)"
                    R"("thread_settings":{{{}}}}})",
            fields));
}

std::string prompt(int minute, const std::string &text)
{
    return at(minute,
        fmt::format(
            R"("type":"event_msg","payload":{{"type":"user_message","message":"{}"}})", text));
}

/// Counts in the order of input, cached, written to the cache, output and reasoning.
using Counts = std::array<int, 5>;

std::string usage(const Counts &counts)
{
    return fmt::format(R"({{"input_tokens":{},"cached_input_tokens":{},)"
                       R"("cache_write_input_tokens":{},"output_tokens":{},)"
                       R"("reasoning_output_tokens":{}}})",
        counts[0], counts[1], counts[2], counts[3], counts[4]);
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

struct File {
    std::string name;
    Lines lines;
};

/// Reads a file; in pieces of a line each, every one of them from what was kept of those before.
Rollout read(const File &file, bool inPieces)
{
    static JsonLine json {LineReader::longestLine};
    RolloutParser parser(json);
    RolloutLine line;
    Rollout rollout = startRollout("rollout-" + file.name);
    RolloutReader whole(rollout);
    for (const std::string &text : file.lines) {
        const std::string padded = text + std::string(LineReader::padding, ' ');
        if (parser.parse(std::string_view(padded).substr(0, text.size()), line)
            != LineOutcome::Parsed) {
            continue;
        }
        if (inPieces) {
            rollout = unpackedRollout(packed(rollout)).value_or(Rollout {});
            RolloutReader(rollout).add(line, parseMoment(line.timestamp));
        } else {
            whole.add(line, parseMoment(line.timestamp));
        }
    }
    return rollout;
}

/// Calls `check(book)` with the files in either order, read at once or in pieces.
void withBooks(std::vector<File> files, const std::function<void(const RolloutBook &)> &check)
{
    for (const bool inPieces : {false, true}) {
        RolloutBook book;
        for (const File &file : files) {
            book.add(read(file, inPieces));
            EXPECT_EQ(packed(read(file, inPieces)), packed(read(file, false)));
        }
        check(book);
        std::reverse(files.begin(), files.end());
    }
}

/// What was used, as "minute session model fresh/read/written/output", in order, with a mark for
/// what was fast (!) or flexible (?), and where something is missing (+).
std::string used(const RolloutBook &book)
{
    Lines rows;
    book.forEach([&](const UsageRecord &each) {
        const TextPool &names = book.names();
        rows.push_back(fmt::format("{} {} {} {}/{}/{}/{}{}{}{}",
            momentText(each.time()).substr(14, 2), names.text(each.session.text),
            names.text(each.model.text), each.usage.input, each.usage.cacheRead,
            each.usage.cacheWrite(), each.usage.output, each.speed == Speed::Fast ? "!" : "",
            each.tier == ServiceTier::Batch ? "?" : "", each.isIncomplete() ? "+" : ""));
    });
    std::sort(rows.begin(), rows.end());
    return fmt::format("{}", fmt::join(rows, ", "));
}

const std::string first = total(2, {100, 40, 10, 5});
const std::string second = total(3, {300, 140, 10, 15});
const std::string modelN = R"("model":"n","service_tier":null)";
const std::string threadA = "01990000-0000-7000-8000-00000000000a";
const std::string threadB = "01990000-0000-7000-8000-00000000000b";

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
                        settings(modelN), total(8, {300, 140, 10, 15}), turn("t2", "m"),
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
                {meta("a"), settings(R"("model":"z")"), turn("t1", "m"), settings(modelN),
                    record(2, "a", "r1", {1, 0, 0, 1}), turn("t2", "o"),
                    record(3, "a", "r2", {2, 0, 0, 2}), record(4, "a", "r3", {3, 0, 0, 3}, "t2"),
                    record(5, "a", "r4", {4, 0, 0, 4}, "untold"),
                    record(6, "a", "r5", {5, 0, 0, 5}, "")}}},
            "02 a n 1/0/0/1, 03 a n 2/0/0/2, 04 a o 3/0/0/3, 05 a o 4/0/0/4, 06 a o 5/0/0/5"},
        {"the tier stays until another is told, and what was ordered before has its own",
            {{"a",
                {meta("a"), turn("t1", "m"), settings(R"("service_tier":"priority")"),
                    record(2, "a", "r1", {1, 0, 0, 1}), settings(R"("model":"n")"),
                    record(3, "a", "r2", {2, 0, 0, 2}), settings(R"("service_tier":"flex")"),
                    record(4, "a", "r3", {3, 0, 0, 3}), settings(R"("service_tier":null)"),
                    record(5, "a", "r4", {4, 0, 0, 4}), record(6, "a", "r1", {1, 0, 0, 1})}}},
            "02 a m 1/0/0/1!, 03 a n 2/0/0/2!, 04 a n 3/0/0/3?, 05 a n 4/0/0/4"},
        {"a total may stand before its record; what has none is known to be missing",
            {{"a",
                {meta("a"), turn("t1", "m"), first, second, record(4, "a", "r1", {200, 100, 0, 10}),
                    total(5, {400, 140, 10, 20}), record(6, "a", "r2", {100, 0, 0, 5}),
                    total(7, {500, 140, 10, 25}), record(8, "a", "r3", {100, 0, 0, 6}),
                    total(8, {600, 140, 10, 31})}}},
            "02 a m 50/40/10/5, 04 a m 100/100/0/10, 06 a m 100/0/0/5, 07 a m 0/0/0/0+, "
            "08 a m 100/0/0/6"},
        {"what stands before another's record is a copy",
            {{"b",
                {meta("b", forkOf("gone")), turn("t1", "m"), first,
                    record(2, "gone", "r1", {100, 40, 10, 5}), second}}},
            "02 gone m 50/40/10/5, 03 b m 100/100/0/10"},
        {"a fork's own totals before its records count where copies can be told",
            {{"a", {meta("a"), turn("t1", "m"), first}},
                {"b",
                    {meta("b", forkOf("a")), turn("t1", "m"), first, second,
                        record(4, "b", "r1", {1, 0, 0, 1})}},
                {"c",
                    {meta("c", forkOf("gone")), turn("t1", "m"), second,
                        record(5, "c", "r2", {2, 0, 0, 2})}}},
            "02 a m 50/40/10/5, 03 b m 100/100/0/10, 04 b m 1/0/0/1, 05 c m 2/0/0/2"},
        {"files of one thread are put together",
            {{"a", {meta("a"), turn("t1", "m"), first, record(5, "a", "r1", {1, 0, 0, 1})}},
                {"moved",
                    {meta("a"), turn("t1", "m"), first, second, total(7, {900, 140, 10, 15})}},
                {"copy",
                    {meta("a"), turn("t1", "m"), record(6, "a", "r2", {2, 0, 0, 2}),
                        record(6, "a", "r1", {1, 0, 0, 2})}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/10, 05 a m 1/0/0/2, 06 a m 2/0/0/2"},
        {"a torn front leaves the file to the thread that its name tells",
            {{"a-" + threadA, {meta(threadA), turn("t1", "m"), first}},
                {"b-" + threadB, {"{torn", meta(threadA), turn("t1", "m"), first, second}}},
            "02 01990000-0000-7000-8000-00000000000a m 50/40/10/5, "
            "03 01990000-0000-7000-8000-00000000000b m 100/100/0/10"},
        {"the oldest thread's earliest line tells the settings",
            {{"a", {meta("a"), turn("t1", "m"), record(5, "a", "r1", {1, 0, 0, 1})}},
                {"copy", {meta("a"), turn("t1", "k"), record(6, "a", "r1", {1, 0, 0, 1})}},
                {"b",
                    {meta("b", forkOf("a")), turn("t1", "o"), record(4, "b", "r1", {1, 0, 0, 1})}},
                {"c",
                    {meta("c", forkOf("a")), turn("t1", "p"), record(3, "c", "r1", {1, 0, 0, 1})}}},
            "03 a m 1/0/0/1"},
        {"siblings may have equal totals, and totals differ by their reasoning",
            {{"a", {meta("a"), turn("t1", "m"), total(1, {300, 140, 10, 15, 9})}},
                {"b", {meta("b", spawnedBy("a")), turn("t1", "m"), first, second}},
                {"c", {meta("c", spawnedBy("a")), turn("t1", "m"), second}}},
            "01 a m 150/140/10/15, 02 a m 50/40/10/5, 03 a m 100/100/0/10, 03 a m 150/140/10/15"},
        {"no more is cached than there was, and a type stands behind an object",
            {{"a",
                {meta("a"), turn("t1", "m"),
                    at(2,
                        R"("git":{"type":"branch"},"type":"token_usage_record",)"
                        R"("payload":{"response_id":"r1","usage":{"input_tokens":100,)"
                        R"("cached_input_tokens":90,"cache_write_input_tokens":20}})")}}},
            "02 a m 0/90/10/0"},
    };
    for (const auto &row : rows) {
        withBooks(row.files,
            [&row](const RolloutBook &book) { EXPECT_EQ(used(book), row.expected) << row.rule; });
    }
}

TEST(Rollouts, tellOfSessions)
{
    const std::vector<File> files {
        {"a",
            {meta("a"), prompt(1, "asked"), turn("t1", "m"), first, prompt(3, "asked on"), second}},
        {"b",
            {meta("b", forkOf("a")), meta("a"), prompt(5, "asked"), first, prompt(5, "asked on"),
                second, prompt(6, "asked anew"), total(7, {400, 140, 10, 20})}},
        {"empty", {meta("empty", forkOf("a")), meta("a"), prompt(5, "asked"), first}},
        {"s",
            {meta("s", spawnedBy("named")), prompt(8, "hidden"),
                record(9, "s", "r1", {1, 0, 0, 1})}},
        {"lone",
            {meta("lone", forkOf("gone")), prompt(5, "asked"),
                record(5, "gone", "r9", {1, 0, 0, 1}), prompt(6, "asked alone")}},
        {"named",
            {meta("named"), prompt(2, "asked"),
                at(3,
                    R"("type":"event_msg","payload":{"type":"thread_name_updated",)"
                    R"("thread_id":"named","thread_name":"A name"})")}}};
    withBooks(files, [](const RolloutBook &book) {
        Lines rows;
        for (const RolloutSession &each : book.sessions()) {
            rows.push_back(fmt::format("{}: {}, {} {}", book.names().text(each.thread), each.title,
                book.names().text(each.folder), momentText(each.end).substr(14, 2)));
        }
        std::sort(rows.begin(), rows.end());
        EXPECT_EQ(fmt::format("{}", fmt::join(rows, "\n")),
            "a: asked, /home/u/a 03\nb: asked anew, /home/u/b 07\nempty: asked,  05\n"
            "gone: , /home/u/lone 05\nlone: asked alone,  06\nnamed: A name, /home/u/s 09");
    });
}

TEST(Rollouts, arePackedTightlyAndNotTakenWhenDamaged)
{
    File file {"b", {meta("b", forkOf("a")), meta("a"), turn("t1", "m")}};
    constexpr int count = 500;
    for (int i = 1; i <= count; ++i) {
        const std::string response = record(
            i % 60, i % 2 == 0 ? "b" : "c", fmt::format("r{}", i), {90'000, 80'000, 500, 700});
        file.lines.insert(file.lines.end(),
            {response, response, total(i % 60, {90'000 * i, 80'000 * i, 500 * i, 700 * i})});
    }
    const Rollout rollout = read(file, false);
    EXPECT_EQ(kinOf(rollout), (Lines {"b", "a", "c"}));
    std::string bytes = packed(rollout);
    EXPECT_LT(bytes.size(), std::size_t {45} * count);
    EXPECT_FALSE(unpackedRollout(bytes.substr(1)));
    for (char &byte : bytes) {
        byte ^= 1;
        EXPECT_FALSE(unpackedRollout(bytes));
        byte ^= 1;
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
        {"no reading is from the future",
            {{"a", {meta("a"), limits(54, weekly)}}, {"b", {meta("b"), limits(56, both)}}},
            fmt::format(R"({{{},"updatedAt":"2026-11-20T09:54:00.000Z"}})", weeklyJson)},
        {"and what it wrote itself counts",
            {{"a", {meta("a"), limits(3, both, {100, 0, 0, 0})}},
                {"b",
                    {meta("b", forkOf("a")), limits(8, both, {100, 0, 0, 0}),
                        limits(9, weekly, {200, 0, 0, 0})}}},
            fmt::format(R"({{{},"updatedAt":"2026-11-20T09:09:00.000Z"}})", weeklyJson)},
    };
    const TimePoint now = parseMoment("2026-11-20T09:50:00Z").value();
    for (const auto &row : rows) {
        withBooks(row.files, [&](const RolloutBook &book) {
            const auto newest = book.limits(now);
            EXPECT_EQ(newest ? limitsJson(*newest) : "\n", row.expected + '\n') << row.rule;
        });
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
    Skips skips;
    LineReader reader;
    RolloutBook book;
    std::size_t failed = 0;
    const auto files = findRollouts(scratch.codex(), skips);
    for (const FoundFile &found : files) {
        const std::filesystem::path path = found.path;
        File file;
        EXPECT_FALSE(reader.open(path));
        while (const auto line = reader.next()) {
            file.lines.emplace_back(*line);
        }
        failed += reader.failed() ? 1 : 0;
        book.add(read(file, false));
    }
    EXPECT_EQ(used(book), "02 a m 50/40/10/5, 02 b n 50/40/10/5, 03 a m 100/100/0/10");
    EXPECT_EQ(files.size(), 6U);
    EXPECT_EQ(failed, 2U);
}

} // namespace
