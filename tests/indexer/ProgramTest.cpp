#include "indexer/Scratch.h"

#include <chrono>
#include <cstdlib>
#include <fmt/format.h>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using nlohmann::json;

std::string content(const fs::path &file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

const std::set<std::string> alone {"stats.json"};

struct Ending {
    int status = -1;
    std::string output;
    std::string messages;
};

/// The built program, started by a shell as a user would.
class Program : public testing::Test {
protected:
    Ending run(const std::string &arguments, const std::string &before = {}) const
    {
        const char *build = std::getenv("KESTRELBAY_BUILD");
        const std::string command = fmt::format(
            "cd '{}' && {} >output 2>messages </dev/null '{}/bin/kestrelbay-indexer' {}",
            scratch.root().native(), before, build != nullptr ? build : ".", arguments);
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content(scratch.root() / "output"),
            content(scratch.root() / "messages")};
    }

    static std::set<std::string> namesIn(const fs::path &folder)
    {
        std::set<std::string> names;
        for (const auto &entry : fs::directory_iterator(folder)) {
            names.insert(entry.path().filename());
        }
        return names;
    }

    static json firstDay(const fs::path &stats) { return json::parse(content(stats))["days"][0]; }

    const Scratch scratch;
};

TEST_F(Program, writesTheStatisticsForItsUserAlone)
{
    scratch.transcript("p/a.jsonl", {Answer {}.line()});
    const Ending first = run("--data new/data --claude claude", "umask 0;");
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.output + first.messages, "");
    const fs::path data = scratch.root() / "new/data";
    EXPECT_EQ(namesIn(data), alone);
    struct stat folder { };
    struct stat before { };
    struct stat after { };
    ASSERT_EQ(stat(data.c_str(), &folder), 0);
    ASSERT_EQ(stat((data / "stats.json").c_str(), &before), 0);
    EXPECT_EQ(folder.st_mode, S_IFDIR | 0700U);
    EXPECT_EQ(before.st_mode, S_IFREG | 0600U);
    EXPECT_EQ(firstDay(data / "stats.json")["date"], "2026-11-20");

    EXPECT_EQ(run("--data new/data --claude claude").status, 0);
    ASSERT_EQ(stat((data / "stats.json").c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino) << "equal bytes were written again";
}

TEST_F(Program, keepsTheOldStatisticsWhenItCannotWrite)
{
    scratch.transcript("p/a.jsonl", {Answer {}.line()});
    scratch.write("data/stats.json", "old");
    scratch.write("file", "");
    fs::create_directories(scratch.root() / "taken/stats.json/x");
    const struct {
        const char *data;
        const char *before;
        const char *problem;
    } rows[] = {
        {"data", "ulimit -f 1;", "write data/stats.json: File too large"},
        {"file/data", "", "create the folder file/data: Not a directory"},
        {"file", "", "use file: Not a directory"},
        {"taken", "", "write taken/stats.json: Is a directory"},
    };
    for (const auto &row : rows) {
        const Ending failed = run(fmt::format("--data {} --claude claude", row.data), row.before);
        EXPECT_EQ(failed.messages, fmt::format("kestrelbay-indexer: cannot {}\n", row.problem));
        EXPECT_EQ(failed.status, 1);
    }
    EXPECT_EQ(content(scratch.data() / "stats.json"), "old");
    EXPECT_EQ(namesIn(scratch.data()), alone);
    EXPECT_EQ(namesIn(scratch.root() / "taken"), alone);
    const Ending full = run("report --claude claude --data data >/dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.messages, "kestrelbay-indexer: cannot write to standard output\n");
}

TEST_F(Program, understandsItsCommandLine)
{
    scratch.transcript("p/a.jsonl", {Answer {}.line()});
    fs::create_directory(scratch.root() / "empty");
    const struct {
        const char *arguments;
        int status;
        const char *output;   // a part of it
        const char *messages; // likewise
    } rows[] = {
        {"--help", 0, "report", ""},
        {"--claude claude report weekly", 0, "2026-11-16", ""},
        {"report --data data monthly --claude claude --json", 0, "\"2026-11\"", ""},
        {"report --claude empty", 0, "transcripts were found in empty/projects.", ""},
        {"report --claude empty --json", 0, "[]", ""},
        {"--jason", 2, "", "kestrelbay-indexer: "},
        {"--data ''", 2, "", "kestrelbay-indexer: "},
        {"\"$(printf 'a\\033b')\"", 2, "",
            "kestrelbay-indexer: The following argument was not expected: a?b "},
    };
    for (const auto &row : rows) {
        const Ending result = run(row.arguments);
        EXPECT_EQ(result.status, row.status) << row.arguments;
        EXPECT_NE(result.output.find(row.output), std::string::npos) << row.arguments;
        EXPECT_EQ(result.messages.find(row.messages), 0U) << row.arguments;
        EXPECT_EQ(result.messages.empty(), row.status == 0) << result.messages;
    }
    EXPECT_FALSE(fs::exists(scratch.data())) << "a report wrote something";
}

TEST_F(Program, writesThroughLinksAndTidiesUp)
{
    const fs::path elsewhere = scratch.root() / "elsewhere";
    for (const char *name : {".stats.json.killed", ".stats.json.others0", ".stats.json.recent"}) {
        scratch.write(elsewhere / name, "");
    }
    const auto longAgo = fs::file_time_type::clock::now() - 2h;
    fs::last_write_time(elsewhere / ".stats.json.killed", longAgo);
    fs::last_write_time(elsewhere / ".stats.json.others0", longAgo);
    fs::create_directory(scratch.data());
    fs::create_symlink("../elsewhere/real.json", scratch.data() / "stats.json");
    fs::create_symlink("stats.json", elsewhere / "real.json");
    for (const char *usage : {"\"input_tokens\":250000", "\"input_tokens\":500000"}) {
        scratch.transcript("p/a.jsonl", {Answer {.usage = usage}.line()});
        EXPECT_EQ(run("--data data --claude claude").messages, "");
    }
    EXPECT_TRUE(fs::is_symlink(scratch.data() / "stats.json"));
    EXPECT_TRUE(fs::is_symlink(elsewhere / "real.json"));
    EXPECT_EQ(firstDay(elsewhere / "stats.json")["cost"], 2.0);
    EXPECT_EQ(namesIn(scratch.data()), alone);
    EXPECT_EQ(namesIn(elsewhere),
        (std::set<std::string> {
            ".stats.json.others0", ".stats.json.recent", "real.json", "stats.json"}));
}

TEST_F(Program, doesNotTakeUnreadableTranscriptsForNone)
{
    scratch.write("data/stats.json", "old");
    scratch.write("file", "");
    scratch.write("odd/projects", "");
    fs::create_directories(scratch.root() / "locked/projects");
    fs::permissions(scratch.root() / "locked/projects", fs::perms::none);
    fs::create_directories(scratch.root() / "unmounted");
    fs::create_symlink("/nowhere", scratch.root() / "unmounted/projects");
    std::vector<std::pair<const char *, const char *>> rows {
        {"none", "none: No such file or directory"},
        {"file", "file/projects: Not a directory"},
        {"odd", "odd/projects: Not a directory"},
        {"unmounted", "unmounted/projects: No such file or directory"},
    };
    if (::geteuid() != 0) { // to whom nothing is locked
        rows.emplace_back("locked", "locked/projects: Permission denied");
    }
    for (const auto &[folder, problem] : rows) {
        for (const Ending &ending : {run(fmt::format("--data data --claude {}", folder)),
                 run(fmt::format("report --claude {}", folder)),
                 run("--data data", fmt::format("CLAUDE_CONFIG_DIR={}", folder))}) {
            EXPECT_EQ(
                ending.messages, fmt::format("kestrelbay-indexer: cannot read {}\n", problem));
            EXPECT_EQ(ending.output, "");
            EXPECT_EQ(ending.status, 1);
        }
    }
    EXPECT_EQ(content(scratch.data() / "stats.json"), "old");
}

TEST_F(Program, findsItsFoldersByItself)
{
    // The user database knows this home; the environment is not asked.
    const fs::path home = std::getenv("HOME");
    const Ending byDefault = run("", "CLAUDE_CONFIG_DIR= HOME=/nowhere");
    EXPECT_EQ(byDefault.status, 0) << byDefault.messages;
    EXPECT_TRUE(fs::exists(home / ".kestrelbay/stats.json"));
}

TEST_F(Program, needsLittleMemoryAndSaysWhatItLeftOut)
{
    std::string overlong;
    overlong.resize(50'000'000, 'x');
    std::string dense = R"({"type":"user","x":[)";
    while (dense.size() < (8U << 20U) - 10) {
        dense += "1,";
    }
    scratch.transcript("p/a.jsonl",
        {R"({"type":"user","x":")" + overlong + "\"}", dense + "1]}", Answer {}.line()});
    scratch.write("data/prices.json", R"({"models":{"a\u001b[31m\n":5}})");
#ifdef __SANITIZE_ADDRESS__ // which needs far more for itself
    const char *limit = "";
#else
    // Kibibytes of address space: 64 MiB, and what the shared libraries take of it.
    const char *limit = "ulimit -v 90112;";
#endif
    const Ending result = run("--data data --claude claude", limit);
    EXPECT_EQ(result.messages,
        "kestrelbay-indexer: data/prices.json is not used, the built-in prices are: model "
        "\"a?[31m?\": must be an object with a list \"prices\"\n"
        "kestrelbay-indexer: skipped 1 line (1 longer than 8 MiB)\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(firstDay(scratch.data() / "stats.json")["cost"], 6.0);
}

} // namespace
