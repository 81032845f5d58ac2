#include "widget/scripts/StatsFeed.h"

#include "widget/scripts/DataFolder.h"
#include <QSignalSpy>

namespace {

class Feed : public DataFolder {
protected:
    static void writeStats(const QByteArray &bytes, int stamp)
    {
        writeVersion(Paths::stats(), bytes, stamp);
    }

    void readTwiceNow()
    {
        m_feed.readStats(StatsFeed::Wait::Yes);
        m_feed.readStats(StatsFeed::Wait::Yes);
    }

    StatsFeed m_feed {m_model};
    QSignalSpy m_loads {&m_model, &WidgetModel::statsChanged};
};

TEST_F(Feed, readsEachVersionOnceAndKeepsWhatItHasWhenOneFails)
{
    readTwiceNow();
    writeStats("[]", 1000);
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 0);
    EXPECT_TRUE(m_model.note().contains(QLatin1String("cannot be read")));
    // Another stamp, even an earlier one, is another version.
    writeStats("{\"sessions\":[{}]}", 999);
    readTwiceNow();
    writeStats("{\"sessions\":[{\"cost\":\"1\"}]}", 1001);
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 1);
    EXPECT_EQ(m_model.sessions().size(), 1);
    EXPECT_EQ(logged().count(" stats.json: "), 2);
    writeStats("{}", 1002);
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 2);
}

TEST_F(Feed, takesOnlyTheNewestOfOverlappingReads)
{
    writeStats("{\"sessions\":[{},{}]}", 1000);
    m_feed.readStats(StatsFeed::Wait::No);
    writeStats("{\"sessions\":[{}]}", 1001);
    m_feed.readStats(StatsFeed::Wait::No);
    EXPECT_EQ(m_loads.size(), 0) << "nothing is decoded on this thread";
    ASSERT_TRUE(m_loads.wait(20'000));
    EXPECT_FALSE(m_loads.wait(200)) << "the older one is dropped";
    EXPECT_EQ(m_model.sessions().size(), 1);
}

TEST_F(Feed, leavesTheChartAloneUnderThePointer)
{
    m_model.hover().setX(0);
    writeStats("{\"sessions\":[{}]}", 1000);
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 0);
    m_model.hover().setX({});
    m_feed.flushHeldStats();
    m_feed.flushHeldStats();
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 1);

    // What is held back is dropped once a newer version is being read.
    m_model.hover().setX(0);
    writeStats("{}", 1001);
    readTwiceNow();
    writeStats("{\"sessions\":[{},{}]}", 1002);
    m_feed.readStats(StatsFeed::Wait::No);
    m_model.hover().setX({});
    m_feed.flushHeldStats();
    EXPECT_EQ(m_loads.size(), 1);
    ASSERT_TRUE(m_loads.wait(20'000));
    EXPECT_EQ(m_model.sessions().size(), 2);
}

} // namespace
