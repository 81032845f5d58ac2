#include "usage/RolloutLines.h"

#include "usage/codex/RolloutPacking.h"
#include "usage/codex/RolloutReader.h"
#include "usage/files/FileTree.h"
#include "usage/history/tables/SealedTables.h"
#include "usage/limits/LimitsFile.h"
#include "usage/lines/LineReader.h"
#include "usage/Scratch.h"

#include <chrono>
#include <cstdlib>
#include <fmt/format.h>
#include <gtest/gtest.h>

namespace {

using namespace usage;
using File = RolloutLines;

const std::string first = total(2, {100, 40, 10, 5});
const std::string second = total(3, {300, 140, 10, 15});

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
        std::vector<std::string> rows;
        for (const RolloutSession &each : book.sessions()) {
            rows.push_back(fmt::format("{}: {}, {} {}", book.names().text(each.thread), each.title,
                book.names().text(each.folder), TimeStamp::text(each.end).substr(14, 2)));
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
    EXPECT_EQ(kinOf(rollout), (std::vector<std::string> {"b", "a", "c"}));
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
            usageJson(total), fields));
}

const std::string weekly =
    R"("primary":{"used_percent":55.5,"window_minutes":10080,"resets_at":1795600000})";
const std::string both =
    weekly + R"(,"secondary":{"used_percent":105,"window_minutes":300,"resets_in_seconds":60})";

TEST(Rollouts, takeNoLongerForEachOfManyFolders)
{
    constexpr TextId many = 200'000;
    const auto begin = std::chrono::steady_clock::now();
    OwnTexts texts;
    Rollout rollout;
    RolloutReader reader(rollout);
    for (TextId i = 1; i <= many; ++i) {
        const std::string folder = "/home/u/" + std::to_string(i);
        EXPECT_EQ(texts.add(folder), i);
        EXPECT_EQ(texts.add(folder), i);
        RolloutLine line;
        line.kind = RolloutKind::TurnContext;
        line.cwd = folder;
        reader.add(line, testNow());
    }
    EXPECT_EQ(texts.text(many / 2), "/home/u/" + std::to_string(many / 2));
    EXPECT_EQ(rollout.settings.size(), many);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

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
    const TimePoint now = TimeStamp::parse("2026-11-20T09:50:00Z").value();
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

TEST(Rollouts, stayCountedWhenTheirFilesAreChanged)
{
    const Scratch scratch;
    const std::filesystem::path data = scratch.root() / "data";
    std::filesystem::create_directory(data);
    const auto used = [](int minute, int input) { return total(minute, {input}) + '\n'; };
    const std::string front = meta("a") + '\n' + turn("t1", "m") + '\n' + used(2, 100);
    const std::string former = front + used(3, 300) + used(4, 600);
    const std::string older = front + used(3, 300) + used(9, 350);
    const std::filesystem::path plain = scratch.rollout("a", {});
    const std::filesystem::path archive = scratch.codex() / "archived_sessions";
    const auto writing = [&](const std::string &text) {
        return [&plain, &scratch = scratch, text] { scratch.write(plain, text); };
    };
    const auto other = writing(meta("a") + '\n' + used(8, 70));
    const std::tuple<const char *, std::function<void()>, int> steps[] = {
        {"new", writing(former), 600}, {"cut", writing(front), 600},
        {"grown beyond, by other responses", writing(front + used(5, 900)), 1400},
        {"cut again", writing(front), 1400},
        {"as it was first, and longer", writing(former + used(6, 700)), 1500},
        {"emptied", writing({}), 1500}, {"overwritten", other, 1570},
        {"another thread's moved over it",
            [&] {
                std::filesystem::rename(scratch.rollout("b", {meta("b"), total(7, {50})}), plain);
            },
            1620},
        {"compressed when it was another",
            [&] {
                const std::string command = fmt::format("zstd -q --rm '{}'", plain.native());
                scratch.write(plain, older);
                EXPECT_EQ(std::system(command.c_str()), 0);
            },
            1670},
        {"and a later state of that in the archive",
            [&] { scratch.write(archive / "rollout-old-a.jsonl", older + used(10, 365)); }, 1685},
        {"there and back", writing(former), 1685}, {"and there", other, 1685},
        {"and back", writing(former + used(6, 700)), 1685},
        {"read by other rules",
            [&] {
                Database database(data / History::fileName);
                database.run("UPDATE file SET rules = 0");
                database.run(resealing(fileTable, "true"));
            },
            1685},
        {"all gone", [&] { std::filesystem::remove_all(scratch.codex() / "sessions"); }, 1685}};
    for (const auto &[name, step, expected] : steps) {
        step();
        History history(data);
        scratch.update(history);
        const auto stats = nlohmann::json::parse(statsText(history));
        EXPECT_EQ(stats["totals"]["month"]["tokens"]["input"], expected) << name;
        EXPECT_EQ(history.problem().value_or("") + history.remark(), "") << name;
    }
    // What is told by another version is not kept twice.
    Database database(data / History::fileName);
    EXPECT_EQ(database.number("SELECT count(*) FROM rollout"), 6);
}

} // namespace
