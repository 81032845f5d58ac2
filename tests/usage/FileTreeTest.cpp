#include "usage/files/FileTree.h"

#include "usage/reading/ParallelReader.h"
#include "usage/Scratch.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace usage;

/// The transcripts found without any skip, as paths below projects.
std::vector<std::string> found(const Scratch &scratch)
{
    Skips skips;
    const fs::path projects = scratch.claude() / "projects";
    std::vector<std::string> names;
    for (const FoundFile &file : findTranscripts(projects, skips)) {
        names.push_back(fs::path(file.path).lexically_relative(projects).native());
    }
    EXPECT_EQ(skips.sentence(), "");
    return names;
}

TEST(FileTree, isSearchedToItsLeaves)
{
    const Scratch scratch;
    for (const char *file :
        {"p/s.jsonl", "p/s/subagents/agent-1.jsonl", "p/s/subagents/workflows/wf/agent-2.jsonl",
            "p/s/journal.jsonl", "top.jsonl", "memory/kept.jsonl", "p/é ü.jsonl",
            // and what is no transcript
            "p/s/subagents/journal.jsonl", "p/s/subagents/workflows/wf/journal.jsonl",
            "p/s/tool-results/x.jsonl", "p/memory/x.jsonl", "p/x.orphaned.jsonl",
            "p/x.jsonl.superseded", "p/x.superseded-1.jsonl", "p/old.orphaned/x.jsonl", "p/x.json",
            "p/s/subagents/agent-1.meta.json"}) {
        scratch.transcript(file, {});
    }
    const std::vector<std::string> expected {"memory/kept.jsonl", "p/s/journal.jsonl",
        "p/s/subagents/agent-1.jsonl", "p/s/subagents/workflows/wf/agent-2.jsonl", "p/s.jsonl",
        "p/é ü.jsonl", "top.jsonl"};
    EXPECT_EQ(found(scratch), expected);
}

TEST(FileTree, takesLinkedFoldersAndFilesOnce)
{
    const Scratch scratch;
    scratch.write("elsewhere/b.jsonl", "");
    scratch.transcript("p/a.jsonl", {});
    const fs::path p = scratch.claude() / "projects/p";
    fs::create_directory_symlink(scratch.root() / "elsewhere", p / "linked");
    fs::create_directory_symlink(scratch.root() / "elsewhere", p / "linked-again");
    fs::create_symlink(p / "a.jsonl", p / "b.jsonl");
    fs::create_hard_link(p / "a.jsonl", p / "c.jsonl");
    EXPECT_EQ(found(scratch), (std::vector<std::string> {"p/a.jsonl", "p/linked/b.jsonl"}));
}

TEST(FileTree, passesOverWhatWouldHang)
{
    const Scratch scratch;
    scratch.transcript("p/good.jsonl", {"garbage", AnswerLine {}.line(), "{"});
    const fs::path p = scratch.claude() / "projects/p";
    fs::create_directory_symlink("..", p / "up");
    fs::create_symlink("itself.jsonl", p / "itself.jsonl");
    fs::create_symlink("nowhere", p / "dangling.jsonl");
    fs::create_symlink("nowhere", p / "dangling.txt");
    fs::create_symlink(p / "good.jsonl/x", p / "through a file");
    fs::create_symlink("/dev/zero", p / "device.jsonl");
    ASSERT_EQ(mkfifo((p / "pipe.jsonl").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo((p / "pipe").c_str(), 0600), 0);
    fs::create_directory(p / "folder.jsonl");

    History history;
    scratch.update(history);
    EXPECT_EQ(history.files(), 1U);
    EXPECT_EQ(history.skips().sentence(),
        "skipped 2 lines (2 not JSON) and 6 files or folders (2 not a regular file, 2 in a loop of "
        "links, 2 unreadable)");
    // What becomes a pipe between the search and the reading does not hang either.
    ParallelReader harvest(testNow());
    harvest.read({{.path = p / "pipe.jsonl"}, {.path = p / "gone.jsonl"}},
        [](FilePiece &&) { return true; });
    EXPECT_EQ(harvest.skips().sentence(),
        "skipped 2 files or folders (1 not a regular file, 1 unreadable)");
}

} // namespace
