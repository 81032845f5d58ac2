#include "formats/Limits.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

constexpr TimePoint moment {1'760'000'000s};
constexpr TimePoint three = sys_days(2026y / 3 / 5) + 15h;

Reading reading(double percent, std::optional<TimePoint> resetsAt = {})
{
    return {percent, resetsAt};
}

TEST(Limits, readWhatMakesSenseOfAFile)
{
    const std::pair<const char *, std::optional<Limits>> rows[] = {
        {R"({"updatedAt":1760000000000,"accountAt":1760000000,
             "fiveHour":{"percent":40,"resetsAt":"2026-03-05T15:00:00Z"},
             "sevenDay":{"percent":12.5,"resetsAt":"2026-03-05T16:00:00.000+01:00"}})",
            Limits {moment, reading(40, three), reading(12.5, three), moment}},
        // Nothing known is not the same as nothing read.
        {"{}", Limits()}, {"", std::nullopt}, {R"([{"fiveHour":{"percent":1}}])", std::nullopt},
        {R"({"fiveHour":{"percent":1e999}})", std::nullopt}, // no number that JSON readers know
        // A wrong type takes away no more than what it stands for.
        {R"({"fiveHour":{"percent":"40"},"sevenDay":{"percent":0}})", Limits {{}, {}, reading(0)}},
        {R"({"fiveHour":{"percent":7},"sevenDay":{"percent":"NaN"}})", Limits {{}, reading(7)}},
        {R"({"fiveHour":[{"percent":1}],"sevenDay":{"resetsAt":1760000000}})", Limits()},
        {R"({"updatedAt":"yesterday","accountAt":{},"fiveHour":{"percent":1,"resetsAt":false}})",
            Limits {{}, reading(1)}},
        // Whatever number a file names is taken or left, never clamped.
        {R"({"fiveHour":{"percent":-3,"resetsAt":-1},"sevenDay":{"percent":130}})",
            Limits {{}, reading(-3, TimePoint(-1s)), reading(130)}},
        {R"({"updatedAt":-1e300,"fiveHour":{"percent":1e300,"resetsAt":1e300}})",
            Limits {{}, reading(1e300)}}};
    for (const auto &[json, limits] : rows) {
        EXPECT_TRUE(Limits::parse(json) == limits) << json;
    }
}

TEST(Limits, mergeEachWindowToItsNewerReading)
{
    // Two readings, and whether the first of them counts.
    const std::tuple<std::optional<Reading>, std::optional<Reading>, bool> rows[] = {
        {reading(40, three), reading(70, three + 5min), false},
        {reading(90, three - 5h), reading(5, three), false},
        // Up to ten minutes apart it is one window, of which the fuller reading counts.
        {reading(90, three), reading(5, three + 600s), true},
        {reading(90, three), reading(5, three + 600s + 1ms), false},
        {reading(5, three + 600s), reading(90, three), false},
        {reading(5, three + 600s + 1ms), reading(90, three), true},
        {reading(50), reading(30, three), true}, {reading(30, three), reading(50), false},
        {reading(50), reading(50, three), true}, {reading(1), {}, true}, {{}, reading(1), false},
        {reading(1, TimePoint(-6'000'000'000'000'000s)),
            reading(0, TimePoint(6'000'000'000'000'000s)), false}};
    for (const auto &row : rows) {
        const auto &[a, b, first] = row;
        const Limits counts {{}, first ? a : b, first ? a : b};
        EXPECT_TRUE(Limits::merge(Limits {{}, a, a}, Limits {{}, b, b}) == counts) << &row - rows;
    }
}

TEST(Limits, forgetWhoseAccountAMixtureIsOf)
{
    const Limits older {moment, reading(1), std::nullopt, moment};
    const Limits newer {moment + 1s, std::nullopt, reading(2), moment};
    const Limits undated {std::nullopt, reading(1), reading(2), moment};
    const Limits mixed {moment + 1s, reading(1), reading(2)};
    EXPECT_TRUE(Limits::merge(older, newer) == mixed);
    EXPECT_TRUE(Limits::merge(newer, older) == mixed);
    EXPECT_TRUE(Limits::merge(undated, older) == (Limits {moment, reading(1), reading(2)}));
    EXPECT_TRUE(Limits::merge(older, {}) == older);
    EXPECT_TRUE(Limits::merge({}, newer) == newer);
    EXPECT_FALSE(Limits::merge({}, {}));
}

} // namespace
