#include "indexer/report/StatusText.h"
#include "indexer/report/Waybar.h"
#include "indexer/terminal/Progress.h"
#include "usage/Scratch.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

using namespace indexer;
using namespace usage;
using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;
using json = nlohmann::json;

fs::file_time_type fileTime(TimePoint moment)
{
    return fs::file_time_type::clock::from_sys(moment);
}

TEST(Waybar, isOneLineOfJsonWhateverTheFilesHold)
{
    const std::string totals =
        R"({"totals":{"today":{"cost":4.2},"week":{"cost":30.1},"month":{"tokens":{}}}})";
    const auto claude = [](const char *percent, const char *reset) {
        return fmt::format(R"({{"updatedAt":"2026-11-21T12:00:00Z","fiveHour":{{"percent":{},)"
                           R"("resetsAt":"2026-11-21T{}:00:00Z"}},"sevenDay":{{"percent":3}}}})",
            percent, reset);
    };
    struct Row {
        std::string stats;
        std::chrono::hours age;
        std::string limits;
        json expected; // text, class, percentage
    };
    const Row rows[] = {
        {"", 0h, "", {"", "none", 0}},
        {"{", 0h, "\x80", {"", "none", 0}},
        {"[]", 0h, "null", {"", "none", 0}},
        {R"({"totals":{"today":{"cost":"&<"}}})", 0h, "", {"–", "normal", 0}},
        {totals, 1h, claude("37.4", "13"), {"$4.20 · 37%", "normal", 37}},
        {totals, 1h, claude("59.9", "13"), {"$4.20 · 60%", "normal", 60}},
        {totals, 1h, claude("60", "13"), {"$4.20 · 60%", "warning", 60}},
        {totals, 1h, claude("120", "13"), {"$4.20 · 120%", "critical", 100}},
        {totals, 1h, claude("99", "12"), {"$4.20 · 3%", "normal", 3}},
        // The file tells of yesterday, and so not what was spent today.
        {totals, 14h, claude("37.4", "13"), {"37%", "stale", 37}},
        {totals, 14h, "", {"–", "stale", 0}},
        {"", 0h, claude("37.4", "13"), {"37%", "normal", 37}},
    };
    const Scratch scratch;
    for (const auto &[stats, age, limits, expected] : rows) {
        if (stats.empty()) {
            fs::remove(scratch.root() / "data/stats.json");
        } else {
            fs::last_write_time(scratch.write("data/stats.json", stats), fileTime(testNow() - age));
        }
        scratch.write("claude/usage-limits.json", limits);
        const std::string line = waybarLine(scratch.root() / "data", scratch.claude(), testNow());
        EXPECT_EQ(line.find('\n'), line.size() - 1);
        const json made = json::parse(line);
        EXPECT_EQ((json {made["text"], made["class"], made["percentage"]}), expected) << line;
        EXPECT_TRUE(made["tooltip"].is_string());
    }
}

TEST(Waybar, tellsTheRestInItsTooltip)
{
    const Scratch scratch;
    fs::last_write_time(scratch.write("data/stats.json",
                            R"({"totals":{"today":{"cost":4.2},"week":{"cost":30.1}}})"),
        fileTime(testNow() - 3min));
    scratch.write("data/codex-limits.json",
        R"({"updatedAt":"2026-11-21T10:00:00Z","primary":{"percent":40,"minutes":300,)"
        R"("resetsAt":"2026-11-21T11:00:00Z"},"secondary":{"percent":20,"minutes":10080,)"
        R"("resetsAt":"2026-11-24T08:00:00Z"}})");
    const json made = json::parse(waybarLine(scratch.root() / "data", scratch.claude(), testNow()));
    EXPECT_EQ(made["tooltip"],
        "Today: $4.20\nThis week: $30.10\nThis month: ?\nStatistics changed 3 min ago\n"
        "Codex, 5 hours: was 40%, has begun anew since (12:00); no newer figure\n"
        "Codex, week: 20%, resets in 2 d 20 h (Tue 24 Nov 09:00)\n"
        "Codex limits told 2 h 0 min ago");
}

TEST(Status, tellsWhatIsStored)
{
    HistorySummary facts {.file = "/h/history.sqlite\x1b"};
    EXPECT_EQ(json::parse(statusJson(facts))["since"], nullptr);
    facts.bytes = 12'440'000;
    facts.since = Day {std::chrono::days {20777}};
    facts.answers = 12'345;
    facts.sessions = 1;
    facts.files = 456;
    facts.vanishedFiles = 12;
    facts.lastRun = testNow() - 90min;
    facts.skips.add(LineSkip::NotJson, 2);
    EXPECT_EQ(statusText(facts, testNow(), {}),
        "History      /h/history.sqlite? (12.4 MB)\n"
        "Since        2026-11-20\n"
        "Answers      12,345\n"
        "Sessions     1\n"
        "Transcripts  456 files, 12 of them gone but still counted\n"
        "Last run     11:30 (1 h 30 min ago)\n"
        "Skipped      2 lines (2 not JSON)\n");
    facts.isIncomplete = true;
    EXPECT_NE(statusText(facts, testNow(), {}).find("a run was broken off"), std::string::npos);
    const json made = json::parse(statusJson(facts));
    EXPECT_EQ(made["lastRun"], "2026-11-21T10:30:00.000Z");
    EXPECT_EQ(made["skipped"]["lines"]["notJson"], 2);
}

TEST(Progress, appearsLateAndSeldomAndGoesAway)
{
    std::chrono::steady_clock::time_point now {};
    std::string shown;
    {
        Progress progress(
            [&shown](std::string_view text) { shown += text; }, [&now] { return now; });
        for (int i = 0; i <= 70; ++i) { // for 0.7 seconds
            progress.update(static_cast<std::uint64_t>(i), 100);
            now += 10ms;
        }
    }
    EXPECT_EQ(shown,
        "\r\x1b[KReading [##########----------]  50%  50 bytes of 100 bytes"
        "\r\x1b[KReading [############--------]  60%  60 bytes of 100 bytes"
        "\r\x1b[KReading [##############------]  70%  70 bytes of 100 bytes"
        "\r\x1b[K");
    shown.clear();
    {
        Progress progress(
            [&shown](std::string_view text) { shown += text; }, [&now] { return now; });
        now += 499ms;
        progress.update(1, 2);
    }
    EXPECT_EQ(shown, "");
}

} // namespace
