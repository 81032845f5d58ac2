#include "formats/CodexLimits.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace std::chrono;

/// A window's percentage and its length in seconds.
std::string shown(const std::optional<Reading> &reading, Seconds length)
{
    std::ostringstream text;
    text << (reading ? reading->percent : 0) << "% of " << length.count();
    return text.str();
}

TEST(CodexLimits, orderTheWindowsByLength)
{
    // The minutes of two windows, the first used by 1%, the second by 2%; then what comes of them.
    const std::tuple<const char *, const char *, const char *, const char *> rows[] = {
        {"10080", "300", "2% of 18000", "1% of 604800"},
        {"60.5", "1440", "1% of 3630", "2% of 86400"}, {"300", "300", "1% of 18000", "2% of 18000"},
        // One that does not tell its length comes first, whatever it then counts as.
        {"60", "\"9\"", "2% of 18000", "1% of 3600"}, {"null", "-5", "2% of -300", "1% of 604800"},
        {"1e308", "1", "1% of 18000", "2% of 60"}}; // beyond all numbers
    for (const auto &[first, second, shorter, longer] : rows) {
        const auto codex = CodexLimits::parse(std::string(R"({"primary":{"percent":1,"minutes":)")
            + first + R"(},"secondary":{"percent":2,"minutes":)" + second + "}}");
        ASSERT_TRUE(codex) << first;
        EXPECT_EQ(shown(codex->limits.fiveHour, codex->primaryLength), shorter) << first;
        EXPECT_EQ(shown(codex->limits.sevenDay, codex->secondaryLength), longer) << first;
    }
}

TEST(CodexLimits, readTheRestOfTheFile)
{
    constexpr TimePoint moment {1'760'000'000s};
    CodexLimits told;
    told.limits = {moment, Reading {1, moment}, Reading {2, std::nullopt}, std::nullopt};
    told.plan = "plus";
    constexpr auto whole = R"({"updatedAt":1760000000000,"accountAt":1,"plan":"plus",
        "primary":{"percent":1,"resetsAt":1760000000},
        "secondary":{"percent":2,"resetsAt":"soon"}})";
    EXPECT_TRUE(CodexLimits::parse(whole) == told);
    // A single window is the shorter one, even of a week.
    const auto single = CodexLimits::parse(
        R"({"primary":{"minutes":5},"secondary":{"percent":2,"minutes":10080}})");
    ASSERT_TRUE(single);
    EXPECT_EQ(shown(single->limits.fiveHour, single->primaryLength), "2% of 604800");
    EXPECT_FALSE(single->limits.sevenDay);
    EXPECT_TRUE(CodexLimits::parse(R"({"plan":5,"updatedAt":[]})") == CodexLimits());
    EXPECT_FALSE(CodexLimits::parse("[]") || CodexLimits::parse("{"));
}

} // namespace
