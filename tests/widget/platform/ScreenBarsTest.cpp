#include "widget/platform/screenBars.h"

#include <gtest/gtest.h>

namespace {

TEST(ScreenBars, areTakenFromTheMonitorsTheyAreOn)
{
    // A large monitor, a lower one at its right, and one below the large one.
    const QRect large(0, 0, 1920, 1080);
    const QRect beside(1920, 0, 1280, 720);
    const QRect below(0, 1080, 1920, 1200);
    constexpr int high = 2280;
    constexpr int wide = 3200;
    const struct {
        const char *what;
        ScreenBar bar;
        QRect large;
        QRect beside;
        QRect below;
    } rows[] = {
        {"a top bar", {Qt::TopEdge, {0, 0, 1920, 30}}, {0, 30, 1920, 1050}, beside, below},
        {"one that is told of as a pixel wider", {Qt::TopEdge, {0, 0, 1921, 30}},
            {0, 30, 1920, 1050}, beside, below},
        {"over both", {Qt::TopEdge, {0, 0, wide, 30}}, {0, 30, 1920, 1050}, {1920, 30, 1280, 690},
            below},
        {"at the bottom of the lower one", {Qt::BottomEdge, {1920, 680, 1280, high - 680}}, large,
            {1920, 0, 1280, 680}, below},
        {"between two, one above the other", {Qt::TopEdge, {0, 0, 1920, 1104}}, large, beside,
            {0, 1104, 1920, 1176}},
        {"a left bar of the right one", {Qt::LeftEdge, {0, 0, 1960, 720}}, large,
            {1960, 0, 1240, 720}, below},
        {"a right bar of the one below", {Qt::RightEdge, {1880, 1080, wide - 1880, 1200}}, large,
            beside, {0, 1080, 1880, 1200}},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(clearedOf({row.bar}, large), row.large) << row.what;
        EXPECT_EQ(clearedOf({row.bar}, beside), row.beside) << row.what;
        EXPECT_EQ(clearedOf({row.bar}, below), row.below) << row.what;
    }
}

} // namespace
