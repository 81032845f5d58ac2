#include "widget/model/RowState.h"

#include "widget/model/windowLabel.h"
#include "widget/text/Strings.h"
#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

constexpr double fiveHours = 18'000;
constexpr TimePoint now = sys_days(2026y / 3 / 5) + 11h; // noon in Berlin, on a Thursday

Strings english()
{
    const Texts texts {{u"resetIn"_qs, u"resets {0}, in {1}"_qs}, {u"runout"_qs, u"out in {0}"_qs},
        {u"atTime"_qs, u"at {0}"_qs}, {u"weekdayTime"_qs, u"ddd HH:mm"_qs},
        {u"spanDH"_qs, u"{0}d {1}h"_qs}, {u"spanHM"_qs, u"{0}h {1}m"_qs}, {u"spanM"_qs, u"{0}m"_qs},
        {u"fiveHours"_qs, u"5 hours"_qs}, {u"week"_qs, u"Week"_qs}};
    return Strings(u"en"_qs, {{u"en"_qs, texts}});
}

TEST(RowState, showsTheUsedPercentage)
{
    const std::tuple<double, const char *, QColor, double> rows[] = {{0, "0%", Palette::green(), 0},
        {59.99, "59%", Palette::green(), 0.5999}, {60, "60%", Palette::orange(), 0.6},
        {84.9, "84%", Palette::orange(), 0.849}, {85, "85%", Palette::red(), 0.85},
        {130, "130%", Palette::red(), 1}, {-0.9, "0%", Palette::green(), 0},
        {-3, "-3%", Palette::green(), 0}, {1e300, "9200000000000000000%", Palette::red(), 1}};
    for (const auto &[percent, text, tone, fill] : rows) {
        const RowState state = rowState(Reading {percent, {}}, Seconds(fiveHours), now, english());
        EXPECT_EQ(state.percentText.toStdString(), text);
        EXPECT_EQ(state.tone, tone) << text;
        EXPECT_TRUE(state.percentColor == tone) << text;
        EXPECT_DOUBLE_EQ(state.fill, fill) << text;
        EXPECT_EQ(state.value, percent);
        // Without a reset time there is nothing to pace it by.
        EXPECT_TRUE(state.note.isEmpty() && !state.pace && !state.runout) << text;
    }
}

TEST(RowState, warnsOfRunningOutBeforeTheReset)
{
    // Used percentage, seconds left, seconds of the window; then the pace and the warning.
    const std::tuple<double, qint64, double, double, const char *> rows[] = {
        {30, 14'400, fiveHours, 0.2, "out in 2h 20m"}, {4.99, 14'400, fiveHours, 0.2, ""},
        {5, 17'400, fiveHours, 1 / 30.0, "out in 3h 10m"}, {30, 17'700, fiveHours, 1 / 60.0, ""},
        {19.9, 14'400, fiveHours, 0.2, ""}, {20.01, 14'400, fiveHours, 0.2, "out in 4h 0m"},
        {100, 17'999, fiveHours, 1 / 18'000.0, "exhausted"},
        // What no window is like: longer to go than it is long, without a length, endless.
        {50, 20'000, fiveHours, 0, ""}, {50, 60, 0, 0, ""}, {50, 60, -fiveHours, 1, "out in 0m"},
        {50, 60, 1e308, 1, ""}};
    for (const auto &row : rows) {
        const auto &[percent, left, length, pace, runout] = row;
        const RowState state =
            rowState(Reading {percent, now + seconds(left)}, Seconds(length), now, english());
        ASSERT_TRUE(state.pace) << "row " << &row - rows;
        EXPECT_NEAR(*state.pace, pace, 1e-9) << "row " << &row - rows;
        EXPECT_EQ(state.runout.value_or(QString()).toStdString(), runout) << &row - rows;
        EXPECT_EQ(state.runout.has_value(), *runout != 0);
        EXPECT_EQ(state.runoutColor, percent >= 100 ? Palette::red() : Palette::orange());
    }
}

TEST(RowState, saysWhenTheWindowResets)
{
    const std::tuple<std::optional<Reading>, const char *, const char *, std::optional<double>>
        rows[] = {{{}, "—", "noData", {}}, {Reading {70, now}, "0%", "windowReset", 0},
            {Reading {70, now + 1ms}, "70%", "resets at 12:00, in 1m", 70},
            {Reading {70, now + 90min}, "70%", "resets at 13:30, in 1h 30m", 70},
            {Reading {70, now + 12h}, "70%", "resets Fri 00:00, in 12h 0m", 70}};
    for (const auto &[reading, percent, note, value] : rows) {
        const RowState state = rowState(reading, Seconds(fiveHours), now, english());
        EXPECT_EQ(state.percentText.toStdString(), percent);
        EXPECT_EQ(state.note.toStdString(), note);
        EXPECT_EQ(state.value, value) << note;
        const bool known = value.value_or(0) > 0;
        EXPECT_EQ(state.tone || state.pace || state.runout || state.fill > 0, known) << note;
        EXPECT_EQ(state.percentColor == Palette::tertiary(), !known) << note;
    }
}

TEST(WindowLabel, namesTheUsualWindowsAndCountsOthers)
{
    const std::pair<double, const char *> rows[] = {{18'000, "5 hours"}, {18'030, "5 hours"},
        {17'940.5, "5 hours"}, {18'060, "5h"}, {604'800, "Week"}, {604'741, "Week"},
        {604'860, "7d"}, {86'400, "1d"}, {108'000, "30h"}, {5400, "2h"}, {5399, "1h"}, {1799, "0d"},
        {0, "0d"}, {-1800, "-1h"}, {3.6e15, "1000000000000h"}};
    for (const auto &[length, label] : rows) {
        EXPECT_EQ(windowLabel(Seconds(length), english()).toStdString(), label) << length;
    }
}

} // namespace
