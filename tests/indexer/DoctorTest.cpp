#include "indexer/doctor/Doctor.h"
#include "indexer/doctor/ChildProcess.h"
#include "usage/Scratch.h"

#include <gtest/gtest.h>

using namespace indexer;
using namespace usage;
using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;

/// A home in which nothing is wrong, until something is made wrong in it.
class Doctor : public testing::Test {
protected:
    Doctor()
    {
        program("bin/node", "echo v18.0.0");
        program("data/kestrelbay-indexer", "exit 0");
        scratch.write("data/history.sqlite", "x");
        scratch.write("data/usage-stats.mjs", "x");
        fs::last_write_time(scratch.write("data/stats.json", R"({"totals":{}})"),
            fs::file_time_type::clock::from_sys(testNow() - 1h));
        fs::permissions(root / "data", fs::perms::owner_all);
        fs::create_directories(root / "claude/projects");
        fs::create_directories(root / "codex/sessions");
        scratch.write("claude/settings.json", R"({"cleanupPeriodDays":99999})");
        examined.historyProblem = [] { return std::string(); };
    }

    void program(const fs::path &name, const std::string &script) const
    {
        fs::permissions(scratch.write(name, "#!/bin/sh\n" + script + '\n'), fs::perms::owner_all);
    }

    /// All that is not as it should be.
    [[nodiscard]] std::string complaints() const
    {
        std::string text;
        for (const Finding &finding : examine(examined)) {
            if (finding.severity != Severity::Ok) {
                text += findingsText({finding}, {});
            }
        }
        return text;
    }

    /// The first word of what is told of a finding with this in it.
    [[nodiscard]] std::string wordBefore(const char *part) const
    {
        for (const Finding &finding : examine(examined)) {
            const std::string told = findingsText({finding}, {});
            if (told.find(part) != std::string::npos) {
                return told.substr(0, told.find(' '));
            }
        }
        return {};
    }

    const Scratch scratch;
    const fs::path root = scratch.root();
    Examined examined {.data = root / "data",
        .claude = {root / "claude"},
        .codex = {root / "codex"},
        .path = (root / "bin").native(),
        .now = testNow(),
        .newestAnswer = testNow()};
};

TEST_F(Doctor, findsWhatIsWrongAndOnlyThat)
{
    // A machine whose disk is nearly full is none for this test.
    EXPECT_EQ(complaints(), "");
    struct Row {
        std::function<void()> breaks;
        const char *word;
        const char *part;
    };
    const Row rows[] = {
        {[this] { scratch.write("data/stats.json", "{"); }, "problem", "stats.json: not JSON"},
        {[this] { fs::remove(root / "data/stats.json"); }, "problem", "stats.json is not there"},
        {[this] { scratch.write("data/prices.json", "{}"); }, "problem", "prices.json is not used"},
        {[this] { fs::permissions(root / "data", fs::perms::all); }, "note", "other users can"},
        {[this] { fs::remove(root / "data/usage-stats.mjs"); }, "problem", "mjs is missing"},
        {[this] { scratch.write("data/usage-stats.mjs", ""); }, "problem", "mjs is empty"},
        {[this] { program("bin/node", "echo v16.20.2"); }, "problem", "too old"},
        {[this] { program("bin/node", "echo v20.0.0; exit 1"); }, "problem",
            "not tell its version"},
        {[this] { fs::remove(root / "bin/node"); }, "problem", "neither in PATH"},
        {[this] {
             examined.home = root;
             for (const char *name : {"v18.20.4", "v9.0.0", "v22.1.0", "v20.0.0", "v18.3.0"}) {
                 program(root / ".nvm/versions/node" / name / "bin/node", "echo v22.0.0");
             }
         },
            "ok", "node/v9.0.0/bin/node is v22.0.0"},
        {[this] { examined.historyProblem = [] { return std::string("bad\x1b page"); }; },
            "problem", "the history: bad? page"},
        {[this] { fs::remove(root / "data/history.sqlite"); }, "note", "there is no history yet"},
        {[this] { examined.newestAnswer = testNow() + 1h; }, "problem",
            "newest stored answer is of"},
        {[this] { scratch.write("claude/settings.json", "{}"); }, "note", "after 30 days"},
        {[this] { fs::remove_all(root / "claude/projects"); }, "note", "CLAUDE_CONFIG_DIR"},
        {[this] { fs::remove_all(root / "codex"); }, "note", "CODEX_HOME"},
        {[this] { examined.codex.isNamed = true; }, "problem", "Codex has no folder"},
        {[this] { fs::remove_all(root / "data"); }, "problem", "data: No such file or directory"},
    };
    for (const Row &row : rows) {
        row.breaks();
        EXPECT_EQ(wordBefore(row.part), row.word) << row.part << '\n' << complaints();
    }
    EXPECT_TRUE(hasProblem(examine(examined)));
}

TEST_F(Doctor, waitsForNoProgramForever)
{
    program("bin/slow", "exec sleep 60");
    program("bin/chatty", "exec yes");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(programOutput(root / "bin/slow", {}, 50ms), std::nullopt);
    EXPECT_EQ(programOutput(root / "bin/chatty", {}, 5s), std::nullopt);
    EXPECT_EQ(programOutput(root / "bin/none", {}, 5s), std::nullopt);
    program("bin/echo", "echo \"$1\"");
    EXPECT_EQ(programOutput(root / "bin/echo", {"$(a) b"}, 5s), "$(a) b\n");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
}

} // namespace
