#include "views/MotionFace.h"
#include "views/theme/Motion.h"
#include <gtest/gtest.h>
#include <QSignalSpy>

namespace {

TEST(Theme, standsStillWhileMotionIsReduced)
{
    EXPECT_EQ(Motion::grow(3), (Motion::Ease {0.4, 0.06}));
    EXPECT_EQ(Motion::grow(25), Motion::grow(20)) << "the last of many are not waited for";
    const MotionFace face;
    const QSignalSpy changed(&face, &MotionFace::reducedChanged);
    Motion::setReduced(true);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(MotionFace::number() + MotionFace::press() + MotionFace::hover(), 0);
    EXPECT_EQ(MotionFace::growth(5, 0), 1);
    EXPECT_FALSE(Motion::grow(1) || Motion::island() || Motion::tab() || Motion::ease(1));
    EXPECT_GT(MotionFace::transition(), 0) << "unfold and pop still fade";
    Motion::setReduced(false);
    EXPECT_GT(MotionFace::press(), 0);
}

TEST(Theme, letsBarsGrowOneAfterTheOther)
{
    EXPECT_EQ(MotionFace::growth(0, 0), 0);
    EXPECT_EQ(MotionFace::growth(5, 100), 0);
    EXPECT_EQ(MotionFace::growth(5, 300), 0.875); // half of the time
    EXPECT_EQ(MotionFace::growth(5, 500), 1);
    EXPECT_EQ(MotionFace::growth(5, std::numeric_limits<double>::infinity()), 1);
}

} // namespace
