#include "widget/model/allPoints.h"
#include "widget/model/makeSeries.h"
#include "widget/text/Strings.h"
#include "widget/views/theme/Palette.h"

#include <gtest/gtest.h>
#include <QDate>

namespace {

using namespace std::chrono;

/// This many periods of the tab up to the one of 1 March 2026, which cost 1, 2, 3 …
Stats counted(HistoryTab tab, int count)
{
    PeriodRows rows;
    for (int before = count - 1; before >= 0; --before) {
        const QDate last(2026, 3, 1);
        PeriodRow row {.cost = count - before};
        row.month = last.addMonths(-before).toString(u"yyyy-MM");
        row.date = last.addDays(-before).toString(Qt::ISODate);
        row.start = last.addDays(qint64(-7) * before).toString(Qt::ISODate);
        rows.append(row);
    }
    Stats stats;
    (tab == HistoryTab::Weeks           ? stats.weeks
            : tab == HistoryTab::Months ? stats.months
                                        : stats.days) = rows;
    return stats;
}

/// In Russian, which tells a month in a phrase from one that stands alone.
Series series(const Stats &stats, HistoryTab tab, qint64 offset = 0)
{
    const Texts texts {{u"culture"_qs, u"ru-RU"_qs}, {u"dayShort"_qs, u"d.MM"_qs},
        {u"dayLong"_qs, u"d MMMM yyyy"_qs}, {u"monthShort"_qs, u"MMMM yy"_qs},
        {u"monthLong"_qs, u"MMMM yyyy"_qs}, {u"weekOf"_qs, u"неделя {0}"_qs}};
    const Strings russian(u"ru"_qs, {{u"ru"_qs, texts}});
    return makeSeries(allPoints(stats, tab), tab, offset, russian, sys_days(2026y / 3 / 5) + 11h);
}

TEST(Series, isThePageThatTheOffsetAsksFor)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    // Tab, periods and asked offset; then the bars, the newest one's cost, the last offset and
    // ours.
    const std::tuple<HistoryTab, int, qint64, qsizetype, double, qint64, qint64> rows[] = {
        {HistoryTab::Days, 20, 0, 14, 20, 6, 0}, {HistoryTab::Days, 20, 1, 14, 19, 6, 1},
        {HistoryTab::Days, 20, most, 14, 14, 6, 6}, {HistoryTab::Days, 20, -1, 14, 20, 6, 0},
        {HistoryTab::Days, 10, 3, 10, 10, 0, 0}, {HistoryTab::Days, 0, 3, 0, 0, 0, 0},
        {HistoryTab::Weeks, 16, 1, 14, 15, 2, 1}, {HistoryTab::Months, 13, 9, 12, 12, 1, 1},
        {HistoryTab::Months, 6, 0, 6, 6, 0, 0}, {HistoryTab::Sessions, 20, 5, 0, 0, 0, 0}};
    for (const auto &row : rows) {
        const auto &[tab, count, asked, bars, newestCost, maxOffset, offset] = row;
        const Series made = series(counted(tab, count), tab, asked);
        EXPECT_EQ(made.maxOffset, maxOffset) << &row - rows;
        EXPECT_EQ(made.offset, offset) << &row - rows;
        EXPECT_EQ(made.bars.size(), bars) << &row - rows;
        for (const Bar &bar : made.bars) {
            EXPECT_EQ(bar.cost, newestCost - double(bars - 1 - bar.id)) << &row - rows;
        }
    }
}

TEST(Series, fillsUpFewMonthsWithEmptyOnes)
{
    const QStringList all {u"сентябрь 25"_qs, u"октябрь 25"_qs, u"ноябрь 25"_qs, u"декабрь 25"_qs,
        u"январь 26"_qs, u"февраль 26"_qs, u"март 26"_qs};
    for (const int count : {0, 3, 5}) {
        const Series made = series(counted(HistoryTab::Months, count), HistoryTab::Months, 2);
        ASSERT_EQ(made.bars.size(), 6) << count;
        EXPECT_EQ(made.maxOffset, 0);
        for (qsizetype i = 0; i < 6; ++i) {
            const Bar &bar = made.bars.at(i);
            EXPECT_EQ(bar.label, all.at(count == 0 ? i : i + 1)) << count;
            const Bar empty {i, bar.label, {}, 0, 0, false, {}, true};
            EXPECT_EQ(bar == empty, i < 6 - count) << bar.label.toStdString();
        }
        EXPECT_EQ(made.bars.last().longLabel, count == 0 ? QString() : u"март 2026"_qs);
    }
    const Bar week = series(counted(HistoryTab::Weeks, 1), HistoryTab::Weeks).bars.last();
    EXPECT_EQ(QString(week.label % u' ' % week.longLabel), u"1.03 неделя 1.03");
}

TEST(Series, beginsWithTheFirstPeriodThatCostSomething)
{
    const auto row = [](const char *date, std::optional<double> cost) {
        return PeriodRow {.date = QLatin1String(date), .cost = cost};
    };
    PeriodRow full = row("2026-03-03", 2.5);
    full.tokens = TokenSet {10, 5, 2, 99};
    full.estimated = true;
    full.models = QList<ModelCost> {{u"o3"_qs, 2.5}};
    PeriodRow untold = row("2026-03-04", {});
    untold.tokens = TokenSet {0, {}, {}, 1234};
    Stats stats;
    stats.days = QList<PeriodRow> {row("2026-02-27", 0), row("2026-03-01", -1), row("yesterday", 9),
        full, row("2026-13-04", 1), PeriodRow(), untold, row("2026-03-02", 0)};
    // In the file's order.
    const QList<Bar> bars {
        {0, u"3.03"_qs, u"3 марта 2026"_qs, 2.5, 17, true, {{u"o3"_qs, 2.5}}, false},
        {1, u"4.03"_qs, u"4 марта 2026"_qs, 0, 1234, false, {}, false},
        {2, u"2.03"_qs, u"2 марта 2026"_qs, 0, 0, false, {}, false}};
    EXPECT_TRUE(series(stats, HistoryTab::Days).bars == bars);
    stats.days = QList<PeriodRow> {row("2026-03-01", 0), untold};
    EXPECT_TRUE(series(stats, HistoryTab::Days) == Series());
}

TEST(Series, namesTheCostliestModelsOfThePage)
{
    // What the models cost on the page, two of them on two days; then the legend.
    using Models = QList<ModelCost>;
    const std::tuple<Models, Models, const char *> rows[] = {
        {{{u"gpt-b"_qs, 3}, {u"gpt-d"_qs, 0.04}}, {{u"gpt-a"_qs, 3}, {u"gpt-c"_qs, 5}},
            "GPT-c: 45% GPT-a: 27% GPT-b: 27%"},
        {{{u"claude-opus-4-1"_qs, 1}, {u"o3"_qs, 2}}, {{u"claude-opus-4-1"_qs, 2}},
            "Opus 4.1: 60% o3: 40%"},
        // Four at most, and the fifth counts in the total.
        {{{u"o1"_qs, 5}, {u"o2"_qs, 4}, {u"o3"_qs, 3}}, {{u"o4"_qs, 2}, {u"o5"_qs, 2}},
            "o1: 31% o2: 25% o3: 18% o4: 12%"},
        {{{u"o1"_qs, 99}}, {{u"o2"_qs, 1}}, "o1: 99% o2: 1%"},
        {{{u"o1"_qs, 1}}, {{u"o2"_qs, -1}}, ""},
        {{{u"o1"_qs, 1e308}}, {{u"o1"_qs, 1e308}, {u"o2"_qs, -1e308}}, ""}}; // beyond all numbers
    for (const auto &[first, second, names] : rows) {
        QList<PeriodRow> days;
        for (int day = 0; day < 15; ++day) {
            days << counted(HistoryTab::Days, 15).days->at(day);
        }
        days.first().models = Models {{u"scrolled-off"_qs, 1000}};
        days.last().models = first;
        days[5].models = second;
        Stats stats;
        stats.days = days;
        QStringList texts;
        for (const LegendItem &item : series(stats, HistoryTab::Days).legend) {
            EXPECT_EQ(item.id, texts.size()) << names;
            EXPECT_EQ(item.color, Palette::model(texts.size())) << names;
            texts << item.text;
        }
        EXPECT_EQ(texts.join(u' ').toStdString(), names);
    }
}

} // namespace
