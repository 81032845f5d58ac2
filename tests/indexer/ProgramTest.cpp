#include "usage/history/tables/Database.h"
#include "usage/Scratch.h"

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

std::string content(const fs::path &file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

std::set<std::string> namesIn(const fs::path &folder)
{
    std::set<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename());
    }
    return names;
}

const std::set<std::string> history {"history.sqlite", "history.sqlite-shm", "history.sqlite-wal"};
const std::set<std::string> alone {
    "history.sqlite", "history.sqlite-shm", "history.sqlite-wal", "stats.json"};

#if defined __SANITIZE_ADDRESS__ || defined __SANITIZE_THREAD__ // they need far more for themselves
constexpr const char *limit = "";
constexpr const char *storeLimit = "";
constexpr int many = 20'000;
#else
// Kibibytes of address space: 64 MiB, and what the shared libraries take of it.
constexpr const char *limit = "ulimit -v 98304;";
// And what is stored of the file at hand, as it is and as it will be.
constexpr const char *storeLimit = "ulimit -v 163840;";
constexpr int many = 400'000;
#endif

/// The built program, started by a shell as a user would.
class Program : public testing::Test {
protected:
    /// What it says, then its exit status in brackets.
    std::string run(const std::string &arguments, const std::string &before = {}) const
    {
        const char *build = std::getenv("KESTRELBAY_BUILD");
        const std::string command = fmt::format(
            "cd '{}' && {{ {} '{}/bin/kestrelbay-indexer' {}; }} >output 2>&1 </dev/null",
            root.native(), before, build != nullptr ? build : ".", arguments);
        const int status = std::system(command.c_str());
        return fmt::format(
            "{}[{}]", content(root / "output"), WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    }

    static std::string firstDay(const fs::path &stats)
    {
        return nlohmann::json::parse(content(stats))["days"][0].dump();
    }

    const Scratch scratch;
    const fs::path root = scratch.root();
};

TEST_F(Program, writesTheStatisticsForItsUserAlone)
{
    scratch.transcript("p/a.jsonl", {AnswerLine {}.line()});
    const fs::path data = root / "new/data";
    const fs::path file = data / "stats.json";
    struct stat before { };
    struct stat now { };
    for (const char *mask : {"umask 0777;", "umask 0;"}) {
        fs::remove_all(root / "new");
        EXPECT_EQ(run("--data new/data --claude claude", mask), "[0]");
        ASSERT_EQ(stat((root / "new").c_str(), &now), 0);
        EXPECT_EQ(now.st_mode, S_IFDIR | 0700U) << mask;
    }
    EXPECT_EQ(namesIn(data), alone);
    EXPECT_EQ(firstDay(file).find(R"({"cost":6.0,"date":"2026-11-20")"), 0U);
    ASSERT_EQ(stat(file.c_str(), &before), 0);
    EXPECT_EQ(before.st_mode, S_IFREG | 0600U);
    for (const std::string &name : history) {
        fs::permissions(data / name, fs::perms(0644));
    }
    EXPECT_EQ(run("--data new/data --claude claude"), "[0]");
    for (const std::string &name : history) {
        EXPECT_EQ(fs::status(data / name).permissions(), fs::perms(0600)) << name;
    }
    ASSERT_EQ(stat(file.c_str(), &now), 0);
    EXPECT_EQ(before.st_ino, now.st_ino) << "equal bytes were written again";
    ASSERT_EQ(stat(data.c_str(), &now), 0);
    EXPECT_EQ(now.st_mode, S_IFDIR | 0700U);
    EXPECT_EQ(run("backup --data new/data kept.sqlite", "umask 0;"), "[0]");
    ASSERT_EQ(stat((root / "kept.sqlite").c_str(), &now), 0);
    EXPECT_EQ(now.st_mode, S_IFREG | 0600U);
    // The user database knows the home; the environment is not asked.
    EXPECT_EQ(run("", "CLAUDE_CONFIG_DIR= HOME=/nowhere"), "[0]");
    EXPECT_TRUE(fs::exists(fs::path(std::getenv("HOME")) / ".kestrelbay/stats.json"));
}

TEST_F(Program, keepsTheOldStatisticsWhenItCannotReadOrWrite)
{
    scratch.transcript("p/a.jsonl", {AnswerLine {}.line()});
    scratch.write("data/stats.json", "old");
    scratch.write("file", "");
    scratch.write("odd/projects", "");
    fs::create_directories(root / "taken/stats.json/x");
    fs::create_directories(root / "device");
    fs::create_symlink("null", root / "device/stats.json");
    // Only root may make the device that it could replace.
    const int made = ::geteuid() == 0 ? ::mknod((root / "device/null").c_str(), S_IFCHR | 0600U, 0)
                                      : ::mkfifo((root / "device/null").c_str(), 0600U);
    ASSERT_EQ(made, 0);
    fs::create_directories(root / "unmounted");
    fs::create_symlink("/nowhere", root / "unmounted/projects");
    fs::create_directories(root / "locked/projects");
    fs::permissions(root / "locked/projects", fs::perms::none);
    const std::tuple<const char *, const char *, const char *> rows[] = {
        {"ulimit -f 1;", "--data data --claude claude", "use data/history.sqlite: File too large"},
        {"", "--data file/data --claude claude", "create the folder file/data: Not a directory"},
        {"", "--data file --claude claude", "use file: Not a directory"},
        {"", "--data taken --claude claude", "write taken/stats.json: Is a directory"},
        {"", "report --claude claude --data data >/dev/full", "write to standard output"},
        {"", "--help >/dev/full", "write to standard output"},
        {"", "--data device --claude claude", "write device/null: not a regular file"},
        // Transcripts that cannot be read are not taken for none.
        {"", "--data data --claude none", "read none: No such file or directory"},
        {"CLAUDE_CONFIG_DIR=file", "--data data", "read file/projects: Not a directory"},
        {"", "--data data --codex none", "read none: No such file or directory"},
        {"", "report --claude odd", "read odd/projects: Not a directory"},
        {"", "--data data --claude unmounted",
            "read unmounted/projects: No such file or directory"},
        {"", "--data data --claude locked", "read locked/projects: Permission denied"}};
    for (const auto &[before, arguments, problem] : rows) {
        if (::geteuid() == 0 && std::string(arguments).ends_with("locked")) {
            continue; // to whom nothing is locked
        }
        EXPECT_EQ(
            run(arguments, before), fmt::format("kestrelbay-indexer: cannot {}\n[1]", problem));
        EXPECT_EQ(content(root / "data/stats.json"), "old");
    }
    EXPECT_EQ(namesIn(root / "taken"), alone);
    // What was not asked for holds nothing else up.
    EXPECT_EQ(run("--data data --claude claude", "CODEX_HOME=file"),
        "kestrelbay-indexer: cannot read file/sessions: Not a directory\n[0]");
    EXPECT_EQ(run("--data data", "CLAUDE_CONFIG_DIR=gone"),
        "kestrelbay-indexer: cannot read gone: No such file or directory\n[0]");
    EXPECT_NE(content(root / "data/stats.json"), "old");
}

TEST_F(Program, writesWhatAReportWasTheFirstToRead)
{
    scratch.transcript("p/a.jsonl", {AnswerLine {}.line()});
    EXPECT_EQ(run("--data data --claude claude"), "[0]");
    scratch.transcript("p/b.jsonl", {AnswerLine {.id = "m2"}.line()});
    EXPECT_NE(run("report --data data --claude claude").find("$12.00"), std::string::npos);
    EXPECT_EQ(run("--data data --claude claude"), "[0]");
    EXPECT_EQ(firstDay(root / "data/stats.json").find(R"({"cost":12.0,)"), 0U);
}

TEST_F(Program, replacesOlderLimitsOnly)
{
    scratch.rollout("a",
        {R"({"timestamp":"2026-11-20T09:00:00Z","type":"event_msg","payload":{"type":"token_count",)"
         R"("rate_limits":{"primary":{"used_percent":5,"window_minutes":300}}}})"});
    const std::pair<const char *, bool> rows[] = {{"nonsense", true},
        {R"({"updatedAt":"2026-11-20T08:59:59Z"})", true},
        {R"({"updatedAt":"2026-11-20T10:00:00+01:00"})", false},
        {R"({"updatedAt":"2026-11-20T09:00:01Z"})", false},
        {R"({"updatedAt":"2999-01-01T00:00:00Z"})", true}};
    for (const auto &[held, isReplaced] : rows) {
        const fs::path file = scratch.write("data/codex-limits.json", held);
        EXPECT_EQ(run("--data data --codex codex"), "[0]");
        EXPECT_EQ(content(file),
            isReplaced ? R"({"primary":{"percent":5.0,"minutes":300.0},)"
                         R"("updatedAt":"2026-11-20T09:00:00.000Z"})"
                         "\n"
                       : std::string(held));
    }
}

TEST_F(Program, understandsItsCommandLine)
{
    scratch.transcript("p/a.jsonl", {AnswerLine {}.line()});
    fs::create_directory(root / "empty");
    const std::tuple<const char *, int, const char *> rows[] = {{"--help 2>&-", 0, "report"},
        {"--claude claude report weekly 2>&-", 0, "2026-11-16"},
        {"report --data data monthly --claude claude --json 2>&-", 0, "\"2026-11\""},
        {"report --claude empty", 0, "found in empty/projects and "},
        {"report --data data --claude claude --since 2027-01-01 --provider codex", 0,
            "No usage of codex since 2027-01-01 was found in the transcripts in claude/projects"},
        {"report --claude empty --json", 0, "[]"}, {"--jason >&-", 2, "kestrelbay-indexer: "},
        {"--data '' >&-", 2, "kestrelbay-indexer: "},
        {"\"$(printf 'a\\033b')\" >&-", 2, "The following argument was not expected: a?b "}};
    for (const auto &[arguments, status, part] : rows) {
        const std::string said = run(arguments);
        EXPECT_NE(said.find(part), std::string::npos) << arguments << ": " << said;
        EXPECT_TRUE(said.ends_with(fmt::format("[{}]", status))) << arguments << ": " << said;
    }
    // A report keeps what it read, but the statistics are the widget's.
    EXPECT_EQ(namesIn(root / "data"), history);
}

/// The environment may name folders from where the program is started, which is somewhere else each
/// time.
TEST_F(Program, knowsAFileByItsWholePath)
{
    scratch.transcript("p/a.jsonl", {AnswerLine {}.line()});
    fs::create_directory(root / "inner");
    const std::string data = "--data " + (root / "data").native();
    EXPECT_EQ(run(data, "CLAUDE_CONFIG_DIR=claude"), "[0]");
    EXPECT_EQ(run(data, "cd inner; CLAUDE_CONFIG_DIR=../claude"), "[0]");
    EXPECT_NE(run("status --json " + data).find("\"vanishedFiles\": 0"), std::string::npos);
}

TEST_F(Program, tellsWhatIsStoredWhereNothingCanBeWritten)
{
    scratch.transcript("p/a.jsonl", {AnswerLine {}.line()});
    EXPECT_EQ(run("--data 'a %3f#?' --claude claude"), "[0]");
    const fs::path folder = root / "a %3f#?";
    // As in a copy of the history alone.
    usage::Database(folder / "history.sqlite")
        .run("PRAGMA journal_mode = DELETE; PRAGMA journal_mode = WAL");
    fs::remove(folder / "history.sqlite-shm");
    fs::remove(folder / "history.sqlite-wal");
    fs::permissions(folder, fs::perms(0500));
    const char *asNobodyInParticular =
        ::geteuid() == 0 ? "setpriv --inh-caps=-all --bounding-set=-all" : "";
    const std::string said = run("status --data 'a %3f#?'", asNobodyInParticular);
    EXPECT_NE(said.find("Answers      1\n"), std::string::npos) << said;
    fs::permissions(folder, fs::perms(0700));
}

TEST_F(Program, writesThroughLinksAndTidiesUp)
{
    const fs::path elsewhere = root / "elsewhere";
    for (const char *name : {".stats.json.killed", ".stats.json.others0", ".stats.json.recent"}) {
        fs::last_write_time(scratch.write(elsewhere / name, ""),
            fs::file_time_type::clock::now() - (std::string(name).ends_with("t") ? 0h : 2h));
    }
    fs::create_directory(root / "data");
    fs::create_symlink("../elsewhere/real.json", root / "data/stats.json");
    fs::create_symlink("stats.json", elsewhere / "real.json");
    for (const char *usage : {"\"input_tokens\":250000", "\"input_tokens\":500000"}) {
        scratch.transcript("p/a.jsonl", {AnswerLine {.usage = usage}.line()});
        EXPECT_EQ(run("--data data --claude claude"), "[0]");
    }
    EXPECT_TRUE(fs::is_symlink(root / "data/stats.json"));
    EXPECT_TRUE(fs::is_symlink(elsewhere / "real.json"));
    EXPECT_EQ(firstDay(elsewhere / "stats.json").find(R"({"cost":2.0,)"), 0U);
    EXPECT_EQ(namesIn(root / "data"), alone);
    EXPECT_EQ(namesIn(elsewhere),
        (std::set<std::string> {
            ".stats.json.others0", ".stats.json.recent", "real.json", "stats.json"}));
}

TEST_F(Program, needsLittleMemoryAndSaysWhatItLeftOut)
{
    std::string dense = R"({"type":"user","x":[)";
    while (dense.size() < (8U << 20U) - 10) {
        dense += "1,";
    }
    const std::string overlong = R"({"type":"user","x":")" + std::string(50'000'000, 'x') + "\"}";
    scratch.transcript("p/a.jsonl", {overlong, dense + "1]}", AnswerLine {}.line()});
    scratch.write("data/prices.json", R"({"models":{"a\u001b[31m\n\u202e":5}})");
    EXPECT_EQ(run("--data data --claude claude", limit),
        "kestrelbay-indexer: data/prices.json is not used, the built-in prices are: model "
        "\"a?[31m??\": must be an object with a list \"prices\"\n"
        "kestrelbay-indexer: skipped 1 line (1 longer than 8 MiB)\n[0]");
    EXPECT_EQ(firstDay(root / "data/stats.json").find(R"({"cost":6.0,)"), 0U);
}

TEST_F(Program, needsLittleMemoryForWhatNobodyWrites)
{
    const std::string brackets(30'000'000, '[');
    std::vector<std::string> summaries;
    summaries.reserve(2 * many + 1);
    for (int i = 0; i < 2 * many; ++i) {
        summaries.push_back(
            fmt::format(R"({{"type":"summary","summary":"title {}","leafUuid":"{}"}})", i, i));
    }
    summaries.push_back(AnswerLine {.extra = "\"uuid\":\"7\","}.line());
    scratch.transcript("p/a.jsonl", summaries);
    scratch.write("codex/session_index.jsonl", brackets + "\n{\"id\":\"a\"}\n" + brackets);
    const std::string folders = "--data data --claude claude --codex codex";
    EXPECT_EQ(run(folders, limit), "[0]");
    EXPECT_NE(content(root / "data/stats.json").find("\"title 7\""), std::string::npos);
    for (const std::string &odd : {brackets, '"' + std::string(30'000'000, ' '),
             R"({"totals":{},"x":)" + std::string(30'000'000, '1') + '}'}) {
        scratch.write("data/stats.json", odd);
        const std::string line = run("status --waybar --data data --claude claude", limit);
        EXPECT_NE(line.find(R"("class":"none")"), std::string::npos) << line;
    }
}

TEST_F(Program, needsLittleMemoryForOneLineMore)
{
    std::vector<std::string> lines;
    lines.reserve(many + 1);
    for (int i = 0; i < many; ++i) {
        lines.push_back(
            fmt::format(R"({{"timestamp":"2026-11-20T09:00:00Z","type":"token_usage_record",)"
                        R"("payload":{{"response_id":"{}","usage":{{"input_tokens":5}}}}}})",
                i));
    }
    const std::string folders = "--data data --claude claude --codex codex";
    fs::create_directories(root / "claude/projects");
    scratch.rollout("a", lines);
    EXPECT_EQ(run(folders), "[0]");
    lines.push_back(lines.back());
    lines.back().replace(lines.back().find("_id\":\"") + 6, 1, "x");
    scratch.rollout("a", lines);
    EXPECT_EQ(run(folders, storeLimit), "[0]");
    const auto stats = nlohmann::json::parse(content(root / "data/stats.json"));
    EXPECT_EQ(stats["days"][0]["tokens"]["input"], 5 * (many + 1)) << stats["totals"];
}

} // namespace
