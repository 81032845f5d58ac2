#include "usage/KeptHistory.h"

#include "usage/FirstHistory.h"
#include "usage/history/Backup.h"
#include "usage/history/HistorySummary.h"
#include "usage/history/tables/AnswerTable.h"
#include "usage/history/tables/HistorySchema.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>

namespace {

using namespace usage;
using nlohmann::json;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST_F(KeptHistory, followsWhatHappensToAFile)
{
    const fs::path path = scratch.transcript("p/a.jsonl", {answer("m1", 1), answer("m2", 2)});
    const fs::path elsewhere = path.parent_path() / "b.jsonl";
    const auto append = [&path](const std::string &text) {
        std::ofstream(path, std::ios::app) << text;
    };
    const auto touch = [&path](std::chrono::seconds back) {
        fs::last_write_time(path, fs::file_time_type::clock::now() - back);
    };
    const std::string third = answer("m3", 4) + '\n';
    const std::tuple<const char *, std::function<void()>, double> steps[] = {{"new", [] {}, 3},
        {"half a line more", [&] { append(third.substr(0, 50)); }, 3},
        {"and the rest", [&] { append(third.substr(50)); }, 7},
        {"older than before", [&] { touch(1000h); }, 7},
        {"rewritten in place",
            [&] {
                scratch.transcript(
                    "p/a.jsonl", {answer("m1", 3), answer("m2", 2), answer("m3", 4)});
                touch(1h);
            },
            9},
        // What was counted stays counted.
        {"rewritten with less",
            [&] {
                scratch.transcript(
                    "p/a.jsonl", {answer("m1", 1), answer("m2", 1), answer("m3", 1)});
                touch(2h);
            },
            9},
        {"rewritten and longer",
            [&] {
                scratch.transcript("p/a.jsonl", {answer("m4", 1), std::string(5000, ' ')});
            },
            10},
        {"shorter", [&] { scratch.transcript("p/a.jsonl", {}); }, 10},
        {"grown again", [&] { append(answer("m1", 5) + '\n'); }, 12},
        {"replaced",
            [&] {
                scratch.write("new", answer("m5", 5) + '\n');
                fs::rename(scratch.root() / "new", path);
            },
            17},
        {"moved", [&] { fs::rename(path, elsewhere); }, 17},
        {"another one at its place", [&] { scratch.transcript("p/a.jsonl", {answer("m6", 1)}); },
            18},
        {"both gone",
            [&] {
                fs::remove(path);
                fs::remove(elsewhere);
            },
            18},
        {"back with other content", [&] { scratch.transcript("p/a.jsonl", {answer("m7", 1)}); },
            19},
        {"nothing happened", [] {}, 19}};
    for (const auto &[name, step, expected] : steps) {
        step();
        const json told = look();
        EXPECT_EQ(told["totals"]["month"]["cost"], expected) << name;
        EXPECT_EQ(told["sessions"][0]["cost"], expected) << name;
    }
    EXPECT_EQ(problem + remark, "");
}

TEST_F(KeptHistory, isPricedAnewWithoutItsTranscripts)
{
    const std::string late = "2026-11-20T23:30:00Z";
    const fs::path path = scratch.transcript("p/a.jsonl", {answer("m1", 1, late)});
    EXPECT_EQ(look()["days"][0]["date"], "2026-11-21");
    fs::remove(path);
    PriceTable prices = builtInPrices();
    const PriceRow dear {.rates = {.output = {.picodollars = 40'000'000}}};
    prices.set("claude-opus-5-5", {.rows = {dear}});
    EXPECT_EQ(look(testNow(), prices)["totals"]["month"]["cost"], 2.0);
    // Days are those of the zone that the user is in now.
    const std::string zone = std::getenv("TZ");
    setenv("TZ", "UTC", 1);
    EXPECT_EQ(look()["days"][0]["date"], "2026-11-20");
    setenv("TZ", zone.c_str(), 1);
    tzset();
    EXPECT_EQ(look()["days"][0]["cost"], 1.0);
}

TEST_F(KeptHistory, seesThatClocksChangeAtAnotherHour)
{
    scratch.transcript("p/a.jsonl", {answer("m1", 1, "2026-10-24T21:30:00Z")});
    const std::string zone = std::getenv("TZ");
    const std::pair<const char *, const char *> rows[] = {{"Europe/Athens", "2026-10-25"},
        {"Asia/Beirut", "2026-10-24"}, {"Europe/Athens", "2026-10-25"}};
    for (const auto &[place, day] : rows) {
        setenv("TZ", place, 1);
        EXPECT_EQ(look()["days"][0]["date"], day) << place;
    }
    setenv("TZ", zone.c_str(), 1);
    tzset();
}

TEST_F(KeptHistory, isTakenOverFromTheFirstVersion)
{
    change(firstHistory);
    EXPECT_TRUE(readHistorySummary(file).problem.value_or("").ends_with("brings it up to date"));
    const json told = look();
    EXPECT_EQ(told["totals"]["month"]["tokens"]["output"], 250'100);
    const json &sessions = told["sessions"];
    ASSERT_EQ(sessions.size(), 2U);
    EXPECT_EQ(sessions[0]["title"], "Kept title");
    EXPECT_EQ(sessions[0]["cost"], 5.0);
    EXPECT_EQ(sessions[1]["title"], "Named");
    EXPECT_EQ(problem + remark, "");
    EXPECT_EQ(historyProblem(file), "");
}

TEST(AnswerTable, joinsWhatWasReadByTheSameRules)
{
    Database database {{}};
    ASSERT_EQ(bringSchemaUpToDate(database), std::nullopt);
    const TextPool names;
    AnswerTable answers(database, names);
    const std::tuple<std::int64_t, std::uint64_t, std::uint64_t> steps[] = {
        {1, 500, 500}, {1, 300, 500}, {2, 400, 400}, {1, 900, 400}, {2, 700, 700}};
    for (const auto &step : steps) {
        const auto [rules, output, counted] = step;
        FileAnswer answer {.key = {1, 2}, .record = {}};
        answer.record.standing = Standing(false, testNow());
        answer.record.usage.output = output;
        answers.put({&answer, 1}, rules);
        std::uint64_t told = 0;
        answers.visitAll([&told](const Answer &record) { told = record.usage.output; });
        EXPECT_EQ(told, counted) << rules;
    }
    EXPECT_EQ(database.problem(), std::nullopt);
}

TEST_F(KeptHistory, countsALineOnceItsTimeHasCome)
{
    scratch.transcript("p/a.jsonl", {answer("m1", 1), answer("m2", 2, "2026-11-25T10:00:00Z")});
    EXPECT_EQ(cost(), 1);
    EXPECT_EQ(cost(testNow() + 47h), 3);
}

TEST_F(KeptHistory, isCopiedToTheLastAnswer)
{
    const fs::path copy = scratch.root() / "copy.sqlite";
    const fs::path path = scratch.transcript("p/a.jsonl", {answer("m1", 1)});
    EXPECT_NE(backUp(file, copy), std::nullopt) << "there is none yet";
    EXPECT_EQ(cost(), 1);
    EXPECT_EQ(backUp(file, copy), std::nullopt);
    std::ofstream(path, std::ios::app) << answer("m2", 2) << '\n';
    const json expected = look();
    EXPECT_EQ(backUp(file, copy), std::nullopt) << "in the place of the older one";
    EXPECT_NE(backUp(file, file), std::nullopt);
    change("UPDATE answer SET told = x'00'");
    EXPECT_NE(backUp(file, copy), std::nullopt) << "no damaged one in the place of a sound one";
    fs::remove(path);
    fs::remove_all(data);
    fs::create_directory(data);
    fs::rename(copy, file);
    EXPECT_EQ(look(), expected);
    EXPECT_EQ(problem + remark, "");
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch.root()), {}), 2) << "leftovers";
}

TEST_F(KeptHistory, isLeftToANewerVersion)
{
    scratch.transcript("p/a.jsonl", {answer("m1", 1)});
    EXPECT_EQ(cost(), 1);
    change("PRAGMA user_version = 999; ALTER TABLE fact RENAME TO facts");
    look();
    EXPECT_EQ(problem,
        fmt::format(
            "cannot use {}: it was made by a newer version of this program", file.native()));
}

} // namespace
