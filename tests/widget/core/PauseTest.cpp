#include "widget/core/Pause.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

TEST(Pause, isOnlyEverExtendedAndBeginsAnewWhenTheClockIsSetBack)
{
    constexpr TimePoint noon {12h};
    Pause pause;
    EXPECT_FALSE(pause.lasts(TimePoint()));
    pause.extend(noon, 900s);
    pause.extend(noon + 100s, 300s);
    EXPECT_TRUE(pause.lasts(noon + 900s - 1ms));
    EXPECT_FALSE(pause.lasts(noon + 900s));

    EXPECT_TRUE(pause.lasts(noon - 24h));
    EXPECT_TRUE(pause.lasts(noon - 24h + 800s - 1ms));
    EXPECT_FALSE(pause.lasts(noon - 24h + 800s)) << "no longer than it was to last";

    EXPECT_FALSE(hasPassed(600s, noon, noon + 600s - 1ms));
    EXPECT_TRUE(hasPassed(600s, noon, noon + 600s));
    EXPECT_TRUE(hasPassed(600s, noon, noon - 1ms));
    EXPECT_TRUE(hasPassed(600s, TimePoint::min(), TimePoint::max()));
}

} // namespace
