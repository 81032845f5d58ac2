#include "model/allPoints.h"
#include "model/makeSeries.h"
#include "text/Strings.h"

#include <gtest/gtest.h>
#include <QDate>

namespace {

using namespace std::chrono;

constexpr TimePoint now = sys_days(2026y / 3 / 5) + 11h;

/// Russian, which tells a month in a phrase from one that stands alone.
Strings russian()
{
    const Texts texts {{u"culture"_qs, u"ru-RU"_qs}, {u"dayShort"_qs, u"d.MM"_qs},
        {u"dayLong"_qs, u"d MMMM yyyy"_qs}, {u"monthShort"_qs, u"MMMM yy"_qs},
        {u"monthLong"_qs, u"MMMM yyyy"_qs}, {u"weekOf"_qs, u"неделя {0}"_qs}};
    return Strings(u"ru"_qs, {{u"ru"_qs, texts}});
}

/// This many periods of the tab up to the one of 1 March 2026, which cost 1, 2, 3 …
Stats counted(HistoryTab tab, int count)
{
    const QDate last(2026, 3, 1);
    QList<PeriodRow> rows;
    for (int before = count - 1; before >= 0; --before) {
        PeriodRow row;
        row.cost = count - before;
        if (tab == HistoryTab::Months) {
            row.month = last.addMonths(-before).toString(u"yyyy-MM");
        } else {
            row.date = last.addDays(-before).toString(Qt::ISODate);
            row.start = last.addDays(qint64(-7) * before).toString(Qt::ISODate);
        }
        rows << row;
    }
    Stats stats;
    stats.days = tab == HistoryTab::Days ? std::optional(rows) : std::nullopt;
    stats.weeks = tab == HistoryTab::Weeks ? std::optional(rows) : std::nullopt;
    stats.months = tab == HistoryTab::Months ? std::optional(rows) : std::nullopt;
    return stats;
}

Series series(const Stats &stats, HistoryTab tab, qint64 offset = 0)
{
    return makeSeries(allPoints(stats, tab), tab, offset, russian(), now);
}

TEST(Series, isThePageThatTheOffsetAsksFor)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    const struct {
        HistoryTab tab;
        int count;
        qint64 asked;
        qsizetype bars;
        double newestCost;
        qint64 maxOffset;
        qint64 offset;
    } rows[] = {{HistoryTab::Days, 20, 0, 14, 20, 6, 0}, {HistoryTab::Days, 20, 1, 14, 19, 6, 1},
        {HistoryTab::Days, 20, 9, 14, 14, 6, 6}, {HistoryTab::Days, 20, most, 14, 14, 6, 6},
        {HistoryTab::Days, 20, -1, 14, 20, 6, 0}, {HistoryTab::Days, 10, 3, 10, 10, 0, 0},
        {HistoryTab::Days, 0, 3, 0, 0, 0, 0}, {HistoryTab::Weeks, 16, 1, 14, 15, 2, 1},
        {HistoryTab::Weeks, 1, 0, 1, 1, 0, 0}, {HistoryTab::Months, 13, 9, 12, 12, 1, 1},
        {HistoryTab::Months, 6, 0, 6, 6, 0, 0}, {HistoryTab::Sessions, 20, 5, 0, 0, 0, 0}};
    for (const auto &row : rows) {
        const Series made = series(counted(row.tab, row.count), row.tab, row.asked);
        EXPECT_EQ(made.maxOffset, row.maxOffset) << &row - rows;
        EXPECT_EQ(made.offset, row.offset) << &row - rows;
        EXPECT_EQ(made.bars.size(), row.bars) << &row - rows;
        for (const Bar &bar : made.bars) {
            EXPECT_EQ(bar.cost, row.newestCost - double(row.bars - 1 - bar.id)) << &row - rows;
        }
    }
}

TEST(Series, namesItsBarsByTheTab)
{
    const struct {
        HistoryTab tab;
        const char *label;
        const char *longLabel;
    } rows[] = {{HistoryTab::Days, "1.03", "1 марта 2026"},
        {HistoryTab::Weeks, "1.03", "неделя 1.03"}, {HistoryTab::Months, "март 26", "март 2026"}};
    for (const auto &row : rows) {
        const Bar bar = series(counted(row.tab, 8), row.tab).bars.last();
        EXPECT_EQ(bar.label.toStdString(), row.label);
        EXPECT_EQ(bar.longLabel.toStdString(), row.longLabel);
    }
}

TEST(Series, fillsUpFewMonthsWithEmptyOnes)
{
    const std::pair<int, QStringList> rows[] = {
        {3, {u"октябрь 25"_qs, u"ноябрь 25"_qs, u"декабрь 25"_qs}}, {5, {u"октябрь 25"_qs}},
        {0,
            {u"сентябрь 25"_qs, u"октябрь 25"_qs, u"ноябрь 25"_qs, u"декабрь 25"_qs,
                u"январь 26"_qs, u"февраль 26"_qs}}};
    for (const auto &[count, padding] : rows) {
        const Series made = series(counted(HistoryTab::Months, count), HistoryTab::Months, 2);
        ASSERT_EQ(made.bars.size(), 6) << count;
        EXPECT_EQ(made.maxOffset, 0);
        for (qsizetype i = 0; i < 6; ++i) {
            const Bar &bar = made.bars.at(i);
            const Bar empty {i, padding.value(i), {}, 0, 0, false, {}, true};
            EXPECT_EQ(bar.id, i);
            EXPECT_EQ(bar == empty, i < padding.size()) << bar.label.toStdString();
            EXPECT_EQ(bar.isEmpty, i < padding.size()) << bar.label.toStdString();
        }
    }
}

TEST(Series, beginsWithTheFirstPeriodThatCostSomething)
{
    const auto row = [](const char *date, std::optional<double> cost) {
        PeriodRow made;
        made.date = QLatin1String(date);
        made.cost = cost;
        return made;
    };
    PeriodRow full = row("2026-03-03", 2.5);
    full.tokens = TokenSet {10, 5, 2, 99};
    full.estimated = true;
    full.models = QMap<QString, double> {{u"o3"_qs, 2.5}};
    PeriodRow counted = row("2026-03-04", {});
    counted.tokens = TokenSet {0, {}, {}, 1234};
    Stats stats;
    stats.days = QList<PeriodRow> {row("2026-02-27", 0), row("2026-02-28", {}),
        row("2026-03-01", -1), row("yesterday", 9), full, row("2026-13-04", 1), PeriodRow(),
        counted, row("2026-03-02", 0)};
    // In the file's order.
    const QList<Bar> bars {{0, u"3.03"_qs, u"3 марта 2026"_qs, 2.5, 17, true, *full.models, false},
        {1, u"4.03"_qs, u"4 марта 2026"_qs, 0, 1234, false, {}, false},
        {2, u"2.03"_qs, u"2 марта 2026"_qs, 0, 0, false, {}, false}};
    EXPECT_TRUE(series(stats, HistoryTab::Days).bars == bars);

    stats.days = QList<PeriodRow> {row("2026-03-01", 0), row("2026-03-02", {})};
    EXPECT_TRUE(series(stats, HistoryTab::Days) == Series());
}

TEST(Series, namesTheCostliestModels)
{
    using Models = QMap<QString, double>;
    const struct {
        QList<Models> days;
        const char *legend;
    } rows[] = {
        {{{{u"gpt-b"_qs, 3}, {u"gpt-d"_qs, 0.04}}, {{u"gpt-a"_qs, 3}, {u"gpt-c"_qs, 5}}},
            "GPT-c: 45% GPT-a: 27% GPT-b: 27%"},
        {{{{u"claude-opus-4-1"_qs, 1}, {u"o3"_qs, 2}}, {{u"claude-opus-4-1"_qs, 2}}},
            "Opus 4.1: 60% o3: 40%"},
        // Four at most, and the fifth counts in the total.
        {{{{u"o1"_qs, 5}, {u"o2"_qs, 4}, {u"o3"_qs, 3}, {u"o4"_qs, 2}, {u"o5"_qs, 2}}},
            "o1: 31% o2: 25% o3: 18% o4: 12%"},
        {{{{u"o1"_qs, 99}, {u"o2"_qs, 1}}}, "o1: 99% o2: 1%"},
        {{{{u"o1"_qs, 2}, {u"o2"_qs, -1}}}, "o1: 200%"}, {{{{u"o1"_qs, 1}, {u"o2"_qs, -1}}}, ""},
        {{{{u"o1"_qs, 0}}, {}}, ""},
        {{{{u"o1"_qs, 1e308}}, {{u"o1"_qs, 1e308}, {u"o2"_qs, -1e308}}}, ""}, // beyond all numbers
    };
    for (const auto &row : rows) {
        Stats stats = counted(HistoryTab::Days, static_cast<int>(row.days.size()));
        for (qsizetype i = 0; i < row.days.size(); ++i) {
            (*stats.days)[i].models = row.days.at(i);
        }
        const QList<LegendItem> legend = series(stats, HistoryTab::Days).legend;
        QStringList texts;
        for (const LegendItem &item : legend) {
            constexpr quint32 colors[] = {0x0A84FF, 0xBF5AF2, 0x64D2FF, 0xFFD60A};
            EXPECT_EQ(item.id, texts.size()) << row.legend;
            EXPECT_EQ(item.color, colors[texts.size()]) << row.legend;
            texts << item.text;
        }
        EXPECT_EQ(texts.join(u' ').toStdString(), row.legend);
    }
    // A model that has scrolled off the page has no share in it.
    Stats scrolled = counted(HistoryTab::Days, 15);
    scrolled.days->first().models = Models {{u"o1"_qs, 5}};
    EXPECT_TRUE(series(scrolled, HistoryTab::Days).legend.isEmpty());
    EXPECT_EQ(series(scrolled, HistoryTab::Days, 1).legend.size(), 1);
}

} // namespace
