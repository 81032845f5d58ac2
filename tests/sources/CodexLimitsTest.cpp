#include "sources/CodexLimits.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

TEST(CodexLimits, orderTheWindowsByLength)
{
    using Percent = std::optional<double>;
    constexpr Percent none;
    const struct {
        const char *json;
        Percent shorter;
        double primary;
        Percent longer;
        double secondary;
    } rows[] = {
        {R"({"primary":{"percent":1,"minutes":10080},"secondary":{"percent":2,"minutes":300}})", 2,
            18'000, 1, 604'800},
        {R"({"primary":{"percent":1,"minutes":60.5},"secondary":{"percent":2,"minutes":1440}})", 1,
            3630, 2, 86'400},
        {R"({"primary":{"percent":1,"minutes":300},"secondary":{"percent":2,"minutes":300}})", 1,
            18'000, 2, 18'000},
        // One that does not tell its length comes first, whatever it then counts as.
        {R"({"primary":{"percent":1,"minutes":60},"secondary":{"percent":2,"minutes":"10080"}})", 2,
            18'000, 1, 3600},
        {R"({"primary":{"percent":1},"secondary":{"percent":2,"minutes":-5}})", 2, -300, 1,
            604'800},
        {R"({"primary":{"percent":1,"minutes":1e300},"secondary":{"percent":2,"minutes":1}})", 2,
            60, 1, 6e301},
        // A single window is the shorter one, even of a week.
        {R"({"secondary":{"percent":2,"minutes":10080}})", 2, 604'800, none, 604'800},
        {R"({"primary":{"percent":"1"},"secondary":{"percent":2}})", 2, 18'000, none, 604'800},
        {R"({"primary":{"minutes":5},"secondary":7})", none, 18'000, none, 604'800},
        // A length beyond all numbers is as good as none.
        {R"({"primary":{"percent":1,"minutes":1e308}})", 1, 18'000, none, 604'800},
        {"{}", none, 18'000, none, 604'800}};
    const auto percent = [](const std::optional<Reading> &reading) {
        return reading ? Percent(reading->percent) : Percent();
    };
    for (const auto &row : rows) {
        const auto codex = CodexLimits::parse(row.json);
        ASSERT_TRUE(codex) << row.json;
        EXPECT_EQ(percent(codex->limits.fiveHour), row.shorter) << row.json;
        EXPECT_DOUBLE_EQ(codex->primaryLength.count(), row.primary) << row.json;
        EXPECT_EQ(percent(codex->limits.sevenDay), row.longer) << row.json;
        EXPECT_DOUBLE_EQ(codex->secondaryLength.count(), row.secondary) << row.json;
    }
}

TEST(CodexLimits, readTheRestOfTheFile)
{
    constexpr TimePoint moment {1'760'000'000s};
    CodexLimits told;
    told.limits = {moment, Reading {1, moment}, Reading {2, std::nullopt}, std::nullopt};
    told.plan = QStringLiteral("plus");
    constexpr auto whole = R"({"updatedAt":1760000000000,"accountAt":1,"plan":"plus",
        "primary":{"percent":1,"resetsAt":1760000000},
        "secondary":{"percent":2,"resetsAt":"soon"}})";
    EXPECT_TRUE(CodexLimits::parse(whole) == told);
    EXPECT_TRUE(CodexLimits::parse(R"({"plan":5,"updatedAt":[]})") == CodexLimits());
    for (const char *nothing : {"[]", "{", "", "null"}) {
        EXPECT_FALSE(CodexLimits::parse(nothing)) << nothing;
    }
}

} // namespace
