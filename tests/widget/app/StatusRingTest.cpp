#include "widget/app/StatusRing.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <QPixmap>

namespace {

/// The ring at five past, half past and five to twelve: grey "-", else its tone's letter.
std::string around(const std::optional<double> &percent, int size)
{
    const QImage image = StatusRing::icon(percent).pixmap(size).toImage();
    std::string found;
    for (const double hour : {1.0 / 12, 0.5, 11.0 / 12}) {
        const double angle = 2 * std::acos(-1) * hour;
        const double radius = 6.5 / 18 * size;
        const QColor color = image.pixelColor(
            int(size / 2.0 + radius * std::sin(angle)), int(size / 2.0 - radius * std::cos(angle)));
        const bool red = color.red() > 200;
        const bool green = color.green() > 120;
        const bool drawn = color.alpha() == 255;
        found += !drawn ? '-' : !red ? 'g' : green ? 'o' : 'r';
    }
    return found;
}

TEST(StatusRing, fillsClockwiseInTheToneOfTheExactPercentage)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    const struct {
        std::optional<double> percent;
        const char *key;
        const char *around;
    } cases[] = {
        {{}, "none", "---"},
        {none, "none", "---"},
        {std::numeric_limits<double>::infinity(), "none", "---"},
        {-3, "-3", "---"},
        {0, "0", "---"},
        {12, "12", "g--"},
        {59.6, "60", "gg-"},
        {60, "60", "oo-"},
        {84.6, "85", "oo-"},
        {85, "85", "rr-"},
        {250, "250", "rrr"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(StatusRing::key(c.percent).toStdString(), c.key);
        EXPECT_EQ(around(c.percent, 64), c.around) << c.key;
        EXPECT_EQ(around(c.percent, 22), c.around) << c.key;
    }
}

} // namespace
