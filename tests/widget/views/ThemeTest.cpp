#include "widget/views/theme/Metrics.h"
#include "widget/views/theme/Motion.h"
#include <gtest/gtest.h>
#include <QSignalSpy>

namespace {

TEST(Theme, standsStillWhileMotionIsReduced)
{
    const Motion motion;
    EXPECT_EQ(motion.growDelay(3), 60);
    EXPECT_EQ(motion.growDelay(25), motion.growDelay(20)) << "the last of many are not waited for";
    const Metrics metrics;
    const QSignalSpy changed(&motion, &Motion::changed);
    const QSignalSpy followed(&metrics, &Metrics::changed);
    Motion::setReduced(true);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(followed.size(), 1) << "tables may depend on each other";
    EXPECT_EQ(motion.number() + motion.press() + motion.hover(), 0);
    EXPECT_EQ(motion.growth(5, 0), 1);
    EXPECT_FALSE(motion.growDelay(1) || Motion::island() || motion.tab() || motion.expand());
    EXPECT_GT(motion.transition(), 0) << "unfold and pop still fade";
    Motion::setReduced(false);
    EXPECT_GT(motion.press(), 0);
}

TEST(Theme, letsBarsGrowOneAfterTheOther)
{
    const Motion motion;
    EXPECT_EQ(motion.growth(0, 0), 0);
    EXPECT_EQ(motion.growth(5, 100), 0);
    EXPECT_EQ(motion.growth(5, 300), 0.875); // half of the time
    EXPECT_EQ(motion.growth(5, 500), 1);
    EXPECT_EQ(motion.growth(5, std::numeric_limits<double>::infinity()), 1);
}

} // namespace
