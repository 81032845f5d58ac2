#include "views/ChartLayout.h"
#include "views/BarPart.h"
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
    const struct {
        qsizetype count;
        double gap;
        double slot;
    } rows[] = {{14, 4, 256 / 14.0}, {12, 4, 22}, {11, 4, 268 / 11.0}, {10, 6, 25.4},
        {6, 6, 278 / 6.0}, {1, 6, 308}, {0, 6, 0}};
    for (const auto &row : rows) {
        const ChartLayout layout(row.count);
        EXPECT_EQ(layout.gap, row.gap) << row.count;
        EXPECT_DOUBLE_EQ(layout.slot, row.slot) << row.count;
        EXPECT_DOUBLE_EQ(layout.cell(), row.slot + row.gap) << row.count;
    }
}

TEST(ChartLayout, findsTheBarThatIsMeant)
{
    const QList<Bar> fourteen(14, bar(1));
    QList<Bar> padded(6, bar(0, false, true));
    padded[4] = padded[5] = bar(0);
    const struct {
        const QList<Bar> &bars;
        std::optional<double> x;
        std::optional<qsizetype> index;
    } rows[] = {
        {fourteen, {}, {}},
        {fourteen, 0, 0},
        {fourteen, -900, 0},
        {fourteen, 22.2, 0},
        {fourteen, 22.3, 1},
        {fourteen, 500, 13},
        {fourteen, huge, 13},
        {fourteen, infinite, 13},
        {fourteen, -infinite, 0},
        {fourteen, undefined, {}},
        {padded, 10, {}},
        {padded, 220, 4},
        {{}, 10, {}},
    };
    for (const auto &row : rows) {
        const ChartLayout layout(row.bars.size());
        EXPECT_EQ(layout.index(row.x, row.bars), row.index) << row.x.value_or(-1);
    }
}

TEST(ChartLayout, drawsBarsToScale)
{
    EXPECT_EQ(ChartLayout::scale({}), 0.01);
    EXPECT_EQ(ChartLayout::scale({bar(0), bar(undefined), bar(-7)}), 0.01);
    EXPECT_EQ(ChartLayout::scale({bar(2), bar(8), bar(5)}), 8);
    const struct {
        Bar of;
        double scale;
        double height;
    } rows[] = {
        {bar(8), 8, 78},
        {bar(4), 8, 39},
        {bar(0.08), 8, 3},
        {bar(0), 0.01, 3},
        {bar(-8), 8, 3},
        {bar(8, false, true), 8, 3},
        {bar(huge), huge, 78},
        {bar(infinite), infinite, 3},
    };
    for (const auto &row : rows) {
        EXPECT_DOUBLE_EQ(ChartLayout::height(row.of, row.scale), row.height) << row.of.cost;
    }
}

TEST(ChartLayout, dimsEstimatesAndAllButTheHovered)
{
    const struct {
        Bar of;
        double atRest;
        double hovered;
        double otherHovered;
    } rows[] = {
        {bar(1), 1, 1, 0.45},
        {bar(1, true), 0.45, 1, 0.25},
        {bar(0, true, true), 1, 1, 1},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(ChartLayout::opacity(row.of, 2, {}), row.atRest);
        EXPECT_EQ(ChartLayout::opacity(row.of, 2, 2), row.hovered);
        EXPECT_EQ(ChartLayout::opacity(row.of, 2, 0), row.otherHovered);
    }
}

TEST(BarParts, followTheLegendAndNeverOutgrowTheBar)
{
    LegendItem first;
    first.model = QStringLiteral("a");
    LegendItem second;
    second.model = QStringLiteral("b");
    const auto shares = [&](double cost, const QMap<QString, double> &models) {
        Bar made = bar(cost);
        made.models = models;
        QList<double> list;
        for (const BarPart &part : barParts(made, {first, second})) {
            list << part.share;
        }
        return list;
    };
    const QString a = first.model;
    const QString b = second.model;
    const QString c = QStringLiteral("c");
    using Shares = QList<double>;
    EXPECT_EQ(shares(4, {{b, 1}, {a, 3}}), (Shares {0.75, 0.25}));
    EXPECT_EQ(shares(4, {{b, 1}, {c, 2}}), (Shares {0.25, 0.75})) << "the rest is on top";
    EXPECT_EQ(shares(4, {{a, 6}, {c, 2}}), (Shares {0.75, 0.25})) << "told to be more than it is";
    EXPECT_EQ(shares(4, {{a, -6}, {b, undefined}}), Shares {1});
    EXPECT_EQ(shares(4, {{a, infinite}}), Shares {1});
    EXPECT_EQ(shares(4, {}), Shares {1});
    EXPECT_EQ(shares(0, {{a, 3}, {b, 1}}), Shares {1});
}

} // namespace
