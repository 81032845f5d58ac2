#include "views/MotionFace.h"
#include "views/PaletteFace.h"
#include "views/theme/Motion.h"
#include "views/theme/Palette.h"
#include <gtest/gtest.h>
#include <QSignalSpy>

namespace {

TEST(Theme, turnsPercentagesIntoTones)
{
    const struct {
        double percent;
        std::uint32_t tone;
    } rows[] = {
        {-3, Palette::green},
        {59.999, Palette::green},
        {60, Palette::orange},
        {84.999, Palette::orange},
        {85, Palette::red},
        {1e300, Palette::red},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Palette::toneHex(row.percent), row.tone) << row.percent;
    }
    EXPECT_EQ(PaletteFace::tone(60).name(QColor::HexArgb), QLatin1String("#ffff9f0a"));
    EXPECT_EQ(PaletteFace::tertiary().name(QColor::HexArgb), QLatin1String("#66ebebf5"));
    EXPECT_EQ(PaletteFace::models().constLast().name(), QLatin1String("#ac8e68"));
    EXPECT_EQ(Palette::argb(0x80FF0033), (Palette::Color {1, 0, 0.2, 128 / 255.0}));
}

TEST(Theme, growsElementsOneAfterTheOther)
{
    EXPECT_EQ(Motion::grow(0), (Motion::Ease {0.4, 0}));
    EXPECT_EQ(Motion::grow(3), (Motion::Ease {0.4, 0.06}));
    EXPECT_EQ(Motion::grow(20), (Motion::Ease {0.4, 0.4}));
    EXPECT_EQ(Motion::grow(25), Motion::grow(20));
}

TEST(Theme, standsStillWhileMotionIsReduced)
{
    const MotionFace face;
    QSignalSpy changed(&face, &MotionFace::reducedChanged);
    EXPECT_EQ(MotionFace::number(), 350);
    Motion::setReduced(true);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(MotionFace::number() + MotionFace::press() + MotionFace::hover(), 0);
    EXPECT_FALSE(Motion::grow(1) || Motion::island() || Motion::tab() || Motion::ease(1));
    EXPECT_GT(MotionFace::transition(), 0) << "unfold and pop still fade";
    Motion::setReduced(false);
    EXPECT_EQ(MotionFace::press(), 80);
}

} // namespace
