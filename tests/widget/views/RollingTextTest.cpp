#include "widget/views/RollingText.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>

namespace {

/// Shows a text and its value, which may come in either order.
void show(RollingText &rolling, const char *text, double value)
{
    rolling.setText(QLatin1String(text));
    rolling.setValue(value);
    QCoreApplication::processEvents();
}

QImage drawn(RollingText &rolling, double progress)
{
    rolling.setProgress(progress);
    QImage image(80, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    rolling.draw(painter);
    return image;
}

QImage still(const char *text)
{
    RollingText rolling;
    show(rolling, text, 0);
    return drawn(rolling, 1);
}

TEST(RollingText, goesFromOneTextToTheOtherInTheDirectionOfTheValue)
{
    ASSERT_NE(still("$1.20"), still("$1.30"));
    RollingText rolling;
    show(rolling, "$1.20", 1.2);
    show(rolling, "$1.30", 1.3);
    EXPECT_EQ(rolling.shown(), u"$1.30");
    EXPECT_EQ(drawn(rolling, 0), still("$1.20"));
    EXPECT_EQ(drawn(rolling, 1), still("$1.30"));
    const QImage upwards = drawn(rolling, 0.25);
    EXPECT_NE(upwards, still("$1.20"));
    show(rolling, "$1.20", 1.2);
    EXPECT_EQ(drawn(rolling, 1), still("$1.20"));
    EXPECT_EQ(drawn(rolling, 0.75), upwards); // the same way back
}

TEST(RollingText, goesBetweenTextsOfAnyLength)
{
    const std::pair<const char *, const char *> rows[] = {{"9%", "29%"}, {"100%", "7%"},
        {"$99.50", "$100"}, {"", "$8"}, {"$8", ""}, {"7.2M", "7.3M"}};
    for (const auto &[text, next] : rows) {
        for (const bool digits : {true, false}) {
            RollingText rolling;
            rolling.setProperty("digits", digits);
            show(rolling, "-", 0);
            show(rolling, text, 0);
            show(rolling, next, 1);
            EXPECT_EQ(drawn(rolling, 0), still(text)) << text;
            EXPECT_EQ(drawn(rolling, 1), still(next)) << next;
            EXPECT_NE(drawn(rolling, 0.5), still(next)) << next;
        }
    }
}

TEST(RollingText, leavesPlacesThatStay)
{
    RollingText rolling;
    show(rolling, "17", 17);
    show(rolling, "27", 27);
    const auto end = static_cast<int>(rolling.implicitWidth());
    const QRect last(end - 5, 0, 5, 40);
    EXPECT_NE(drawn(rolling, 0.5), still("27"));
    EXPECT_EQ(drawn(rolling, 0.5).copy(last), still("27").copy(last));
}

TEST(RollingText, rollsOnlyWhereOneTextTakesThePlaceOfAnother)
{
    RollingText rolling;
    int rolled = 0;
    QObject::connect(&rolling, &RollingText::rolled, &rolling, [&rolled] { ++rolled; });
    show(rolling, "$5", 5);
    EXPECT_EQ(rolled, 0); // the first
    rolling.setText(u"$6"_qs);
    show(rolling, "$5", 5);
    EXPECT_EQ(rolled, 0); // away and back before it was seen
    show(rolling, "$6", 6);
    EXPECT_EQ(rolled, 1);
}

} // namespace
