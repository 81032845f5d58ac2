#include "widget/app/DeferredWork.h"

#include <gtest/gtest.h>
#include <QSignalSpy>
#include <vector>

namespace {

using Work = DeferredWork::Work;

TEST(Deferred, workIsDoneOnceAfterTheLastOfABurst)
{
    std::vector<std::function<void()>> sleepers;
    DeferredWork deferred([&](std::chrono::milliseconds time, std::function<void()> then) {
        EXPECT_EQ(time.count(), 350);
        sleepers.push_back(std::move(then));
    });
    QSignalSpy stats(&deferred, &DeferredWork::statsDue);
    QSignalSpy saves(&deferred, &DeferredWork::saveDue);
    for (const Work work : {Work::Save, Work::Save, Work::ReadStats, Work::Save}) {
        deferred.deferWork(work);
    }
    ASSERT_EQ(sleepers.size(), 4U);
    for (std::size_t i = 0; i < 3; ++i) {
        sleepers[i]();
        EXPECT_EQ(saves.size(), 0);
    }
    sleepers[3]();
    EXPECT_EQ(saves.size(), 1);
    EXPECT_EQ(stats.size(), 1);

    deferred.deferWork(Work::Save);
    sleepers[4]();
    EXPECT_EQ(saves.size(), 2);
    EXPECT_EQ(stats.size(), 1) << "nothing is owed any more";
}

} // namespace
