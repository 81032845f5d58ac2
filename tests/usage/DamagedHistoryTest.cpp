#include "usage/KeptHistory.h"

#include "usage/history/HistorySummary.h"

#include <algorithm>
#include <fstream>

namespace {

using namespace usage;
using nlohmann::json;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

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

} // namespace
