#include "indexer/History.h"

#include "indexer/AnswerTable.h"
#include "indexer/Backup.h"
#include "indexer/FirstHistory.h"
#include "indexer/HistoryFacts.h"
#include "indexer/HistorySchema.h"
#include "indexer/PriceFile.h"
#include "indexer/Scratch.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fmt/format.h>
#include <fstream>
#include <gtest/gtest.h>

namespace {

using namespace indexer;
using nlohmann::json;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// An answer of as many dollars.
std::string answer(const std::string &id, int dollars, const std::string &time = {})
{
    const std::string usage = fmt::format(R"("output_tokens":{})", dollars * 50'000);
    return Answer {.id = id, .time = time.empty() ? Answer {}.time : time, .usage = usage}.line();
}

/// A home and the history that is made of it, which is opened anew for each look.
class KeptHistory : public testing::Test {
protected:
    KeptHistory() { fs::create_directory(data); }

    json look(TimePoint now = testNow(), const PriceTable &prices = builtInPrices())
    {
        History history(data);
        json told;
        if (!history.problem()) {
            history.update({scratch.claude(), scratch.codex()}, prices, now, {},
                [&](const History &kept) { told = json::parse(statsText(kept)); });
        }
        problem = history.problem().value_or("");
        remark = history.remark();
        return problem.empty() ? told : json();
    }
    double cost(TimePoint now = testNow()) { return look(now)["totals"]["month"]["cost"]; }

    void change(const std::string &sql) const
    {
        Database database(file);
        database.run(sql);
        EXPECT_EQ(database.problem().value_or(""), "");
    }

    const Scratch scratch;
    const fs::path data = scratch.root() / "data";
    const fs::path file = data / History::fileName;
    std::string problem;
    std::string remark;
};

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
    prices.set("claude-opus-5-5", {.rows = {{.rates = {.output = 40'000'000}}}});
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
    for (const auto &[rules, output, expected] : steps) {
        FileAnswer answer {.key = {1, 2}, .record = {}};
        answer.record.standing = Standing(false, testNow());
        answer.record.usage.output = output;
        answers.put({&answer, 1}, rules);
        answers.visitAll(
            [&](const UsageRecord &record) { EXPECT_EQ(record.usage.output, expected) << rules; });
    }
    EXPECT_EQ(database.problem(), std::nullopt);
}

TEST_F(KeptHistory, countsALineOnceItsTimeHasCome)
{
    scratch.transcript("p/a.jsonl", {answer("m1", 1), answer("m2", 2, "2026-11-25T10:00:00Z")});
    EXPECT_EQ(cost(), 1);
    EXPECT_EQ(cost(testNow() + 47h), 3);
}

TEST_F(KeptHistory, isKeptWhenItIsDamaged)
{
    const fs::path path = scratch.transcript("p/a.jsonl", {answer("m1", 1)});
    const fs::path vanishing = scratch.transcript("p/b.jsonl", {answer("m2", 2)});
    EXPECT_EQ(cost(), 3);
    fs::remove(vanishing);
    // The page of the sums, and then no database at all.
    change("PRAGMA wal_checkpoint(TRUNCATE)");
    const std::streamoff page =
        Database(file).number("SELECT rootpage FROM sqlite_master WHERE name = 'spent'");
    std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).seekp((page - 1) * 4096)
        << std::string(4096, 'x');
    EXPECT_EQ(cost(), 3) << "what is gone could be read of the damaged file";
    EXPECT_NE(remark.find("was damaged and is kept as"), std::string::npos);
    for (const char *part : {"-wal", "-shm"}) {
        fs::remove(file.native() + part);
    }
    std::ofstream(file) << std::string(9000, 'x');
    EXPECT_EQ(cost(testNow() + 26h), 1);
    EXPECT_TRUE(fs::exists(data / "history-damaged-1.sqlite"));
    EXPECT_EQ(fs::file_size(data / "history-damaged-2.sqlite"), 9000U);
}

TEST_F(KeptHistory, isSavedFromWhateverHappensToIt)
{
    const std::tuple<const char *, const char *, double> cases[] = {
        {"an impossible version", "PRAGMA user_version = -1", 3},
        {"a version that it is not of", "PRAGMA user_version = 0", 3},
        {"a version that is still to come", "PRAGMA user_version = 1026", 3},
        {"a lost table", "DROP TABLE spent", 3},
        {"rows that do not belong to their keys",
            "UPDATE answer SET message = message + 1; PRAGMA user_version = -1", 0},
        {"rows that are cut", "UPDATE answer SET told = substr(told, 1, 9); DROP TABLE spent", 0},
        {"names beyond all bounds",
            "UPDATE text SET id = 9999999999 WHERE text = CAST('s1' AS BLOB)", 3},
        {"a lost name", "DELETE FROM text WHERE text = CAST('s1' AS BLOB)", 3},
        {"another name", "UPDATE text SET text = x'FF' WHERE text = CAST('s1' AS BLOB)", 3},
        {"another fact", "UPDATE fact SET value = x'30' WHERE name = 'checked'", 3},
        {"a file of another name", "UPDATE file SET path = x'2F'", 3},
        {"what is told of a session", "UPDATE session_part SET told = substr(told, 2)", 3}};
    for (const auto &[name, damage, expected] : cases) {
        fs::remove_all(data);
        fs::create_directory(data);
        const fs::path path = scratch.transcript("p/a.jsonl", {answer("m1", 1), answer("m2", 2)});
        EXPECT_EQ(cost(), 3) << name;
        fs::remove(path);
        change(damage);
        EXPECT_NE(historyProblem(file), "") << name;
        EXPECT_EQ(cost(), expected) << name;
        EXPECT_NE(remark, "") << name;
        EXPECT_EQ(historyProblem(file), "") << name;
        EXPECT_EQ(cost(), expected) << name;
        EXPECT_EQ(remark, "") << name;
    }
}

TEST_F(KeptHistory, losesOnlyThePagesThatAreLost)
{
    std::vector<std::string> lines(3000);
    std::ranges::generate(lines, [i = 0]() mutable { return answer(fmt::format("m{}", ++i), 1); });
    const fs::path path = scratch.transcript("p/a.jsonl", lines);
    EXPECT_EQ(cost(), 3000);
    fs::remove(path);
    change("PRAGMA wal_checkpoint(TRUNCATE)");
    const auto size = static_cast<std::streamoff>(fs::file_size(file));
    for (const std::streamoff part : {1, 2, 3}) {
        std::fstream(file, std::ios::in | std::ios::out | std::ios::binary)
                .seekp(size * part / 4 / 4096 * 4096)
            << std::string(4096, 'x');
    }
    const double left = cost(testNow() + 25h);
    EXPECT_GT(left, 2500);
    EXPECT_LT(left, 3000);
    EXPECT_NE(remark.find(fmt::format("{:.0f} answers", left)), std::string::npos) << remark;
}

TEST_F(KeptHistory, makesAnewWhatItCanMakeAnew)
{
    const fs::path path = scratch.transcript("p/a.jsonl", {answer("m1", 1), answer("m2", 2)});
    const json expected = look();
    fs::remove(path);
    for (const char *damage :
        {"UPDATE spent SET told = substr(told, 2)", "UPDATE spent SET day = day - 1",
            "UPDATE session SET folder = x'2FFF'", "UPDATE session SET session = session + 7"}) {
        change(damage);
        EXPECT_NE(historyProblem(file), "") << damage;
        EXPECT_EQ(look(), expected) << damage;
        EXPECT_EQ(problem + remark + historyProblem(file), "") << damage;
    }
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

TEST_F(KeptHistory, isNotLostByARunThatWasEnded)
{
    const fs::path path = scratch.transcript("p/a.jsonl", {answer("m1", 1)});
    EXPECT_EQ(cost(), 1);
    fs::remove(path);
    // Half made, whatever is in it; and whole, before it stood in the damaged one's place.
    std::ofstream(data / "history-new.sqlite") << std::string(5000, 'x');
    change("PRAGMA wal_checkpoint(TRUNCATE)");
    EXPECT_EQ(cost(), 1);
    EXPECT_EQ(remark, "");
    change("INSERT INTO fact VALUES ('salvaged', '1', seal('salvaged', '1')); PRAGMA "
           "wal_checkpoint(TRUNCATE)");
    fs::rename(file, data / "history-new.sqlite");
    for (const char *part : {"-wal", "-shm"}) {
        fs::remove(file.native() + part);
    }
    EXPECT_EQ(cost(), 1);
}

TEST_F(KeptHistory, isNotTakenForNewWhenItWasEmptied)
{
    scratch.transcript("p/a.jsonl", {answer("m1", 1)});
    EXPECT_EQ(cost(), 1);
    change("DELETE FROM fact WHERE name = 'checked'"); // so that the journal holds something
    const auto journal = fs::file_size(file.native() + "-wal");
    ASSERT_GT(journal, 0U);
    fs::resize_file(file, 0);
    EXPECT_EQ(cost(), 1);
    EXPECT_NE(remark, "");
    EXPECT_EQ(fs::file_size(data / "history-damaged-1.sqlite-wal"), journal);
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
