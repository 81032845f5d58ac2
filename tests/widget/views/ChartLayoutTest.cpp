#include "widget/views/ChartLayout.h"
#include "widget/views/BarPart.h"
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double huge = std::numeric_limits<double>::max();
constexpr double infinite = std::numeric_limits<double>::infinity();
const double undefined = std::numeric_limits<double>::quiet_NaN();

Bar bar(double cost, bool estimated = false, bool isEmpty = false)
{
    Bar made;
    made.cost = cost;
    made.estimated = estimated;
    made.isEmpty = isEmpty;
    return made;
}

TEST(ChartLayout, sharesTheWidthAmongTheBars)
{
    const std::tuple<qsizetype, double, double> rows[] = {
        {14, 4, 256 / 14.0}, {11, 4, 268 / 11.0}, {10, 6, 25.4}, {1, 6, 308}, {0, 6, 0}};
    for (const auto &[count, gap, slot] : rows) {
        EXPECT_EQ(ChartLayout(count).gap, gap) << count;
        EXPECT_DOUBLE_EQ(ChartLayout(count).slot, slot) << count;
    }
}

TEST(ChartLayout, findsTheBarThatIsMeant)
{
    const QList<Bar> fourteen(14, bar(1));
    QList<Bar> padded(6, bar(0, false, true));
    padded[4] = padded[5] = bar(0);
    const std::tuple<QList<Bar>, std::optional<double>, std::optional<qsizetype>> rows[] = {
        {fourteen, {}, {}}, {fourteen, -900, 0}, {fourteen, 22.2, 0}, {fourteen, 22.3, 1},
        {fourteen, 500, 13}, {fourteen, infinite, 13}, {fourteen, -infinite, 0},
        {fourteen, undefined, {}}, {padded, 10, {}}, {padded, 220, 4}, {QList<Bar>(), 10, {}}};
    for (const auto &[bars, x, index] : rows) {
        EXPECT_EQ(ChartLayout(bars.size()).index(x, bars), index) << x.value_or(-1);
    }
}

TEST(ChartLayout, drawsBarsToScale)
{
    EXPECT_EQ(ChartLayout::scale({bar(0), bar(undefined), bar(-7)}), 0.01);
    EXPECT_EQ(ChartLayout::scale({bar(2), bar(8), bar(5)}), 8);
    const std::tuple<Bar, double, double> rows[] = {{bar(8), 8, 78}, {bar(4), 8, 39},
        {bar(0.08), 8, 3}, {bar(-8), 8, 3}, {bar(8, false, true), 8, 3}, {bar(huge), huge, 78},
        {bar(infinite), infinite, 3}};
    for (const auto &[of, scale, height] : rows) {
        EXPECT_DOUBLE_EQ(ChartLayout::height(of, scale), height) << of.cost;
    }
}

TEST(ChartLayout, dimsEstimatesAndAllButTheHovered)
{
    // At rest, hovered, and beside one that is.
    const std::tuple<Bar, double, double, double> rows[] = {
        {bar(1), 1, 1, 0.45}, {bar(1, true), 0.45, 1, 0.25}, {bar(0, true, true), 1, 1, 1}};
    for (const auto &[of, atRest, hovered, beside] : rows) {
        EXPECT_EQ(ChartLayout::opacity(of, 2, {}), atRest);
        EXPECT_EQ(ChartLayout::opacity(of, 2, 2), hovered);
        EXPECT_EQ(ChartLayout::opacity(of, 2, 0), beside);
    }
}

TEST(BarParts, followTheLegendAndNeverOutgrowTheBar)
{
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    const QString c = QStringLiteral("c"); // not in the legend: the rest is on top
    using Shares = QList<double>;
    const std::pair<QMap<QString, double>, Shares> rows[] = {{{{b, 1}, {a, 3}}, {0.75, 0.25}},
        {{{b, 1}, {c, 2}}, {0.25, 0.75}}, {{{a, 6}, {c, 2}}, {0.75, 0.25}},
        {{{a, -6}, {b, undefined}}, {1}}, {{{a, infinite}}, {1}}, {{}, {1}}};
    for (const auto &[models, expected] : rows) {
        Bar made = bar(4);
        made.models = models;
        Shares shares;
        for (const BarPart &part : barParts(made, {{.model = a}, {.model = b}})) {
            shares << part.share;
        }
        EXPECT_EQ(shares, expected);
    }
}

} // namespace
