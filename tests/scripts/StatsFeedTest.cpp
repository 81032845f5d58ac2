#include "scripts/StatsFeed.h"

#include "core/Paths.h"
#include "core/WidgetLog.h"
#include "FakeClock.h"
#include "model/WidgetModel.h"
#include "TestFiles.h"
#include <QDateTime>
#include <QSignalSpy>

namespace {

class Feed : public testing::Test {
protected:
    void SetUp() override
    {
        WidgetLog::flush();
        QDir(Paths::dir()).removeRecursively();
    }

    /// A version of the file with a stamp of its own, in seconds since 1970.
    static void writeStats(const QByteArray &bytes, int stamp)
    {
        writeFile(Paths::stats(), bytes);
        QFile file(Paths::stats());
        ASSERT_TRUE(file.open(QIODevice::Append));
        ASSERT_TRUE(file.setFileTime(
            QDateTime::fromSecsSinceEpoch(stamp), QFileDevice::FileModificationTime));
    }

    static qsizetype failuresLogged()
    {
        WidgetLog::flush();
        QFile file(Paths::log());
        return file.open(QIODevice::ReadOnly) ? file.readAll().count(" stats.json: ") : 0;
    }

    void readTwiceNow()
    {
        m_feed.readStats(StatsFeed::Wait::Yes);
        m_feed.readStats(StatsFeed::Wait::Yes);
    }

    FakeClock m_clock {TimePoint()};
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
    StatsFeed m_feed {m_model};
    QSignalSpy m_loads {&m_model, &WidgetModel::statsChanged};
};

TEST_F(Feed, readsEachVersionOnce)
{
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 0);
    writeStats("{}", 1000);
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 1);
    writeStats(
        "{\"sessions\":[{}]}", 999); // another stamp, even an earlier one, is another version
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 2);
    EXPECT_EQ(m_model.sessions().size(), 1);
}

TEST_F(Feed, keepsWhatItHasWhenAVersionFails)
{
    writeStats("{\"sessions\":[{}]}", 1000);
    readTwiceNow();
    writeStats("{\"sessions\":[{\"cost\":\"1\"}]}", 1001);
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 1);
    EXPECT_EQ(failuresLogged(), 1);
    EXPECT_TRUE(m_model.unreadable());
    EXPECT_EQ(m_model.sessions().size(), 1);

    writeStats("", 1002);
    readTwiceNow();
    EXPECT_EQ(failuresLogged(), 2);
    writeStats("{}", 1003);
    readTwiceNow();
    EXPECT_EQ(m_loads.size(), 2);
    EXPECT_FALSE(m_model.unreadable());
}

TEST_F(Feed, takesOnlyTheNewestOfOverlappingReads)
{
    writeStats("{\"sessions\":[{},{}]}", 1000);
    m_feed.readStats(StatsFeed::Wait::No);
    writeStats("{\"sessions\":[{}]}", 1001);
    m_feed.readStats(StatsFeed::Wait::No);
    EXPECT_EQ(m_loads.size(), 0) << "nothing is decoded on this thread";
    ASSERT_TRUE(m_loads.wait(20'000));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_loads.size(), 1);
    EXPECT_EQ(m_model.sessions().size(), 1);
}

} // namespace
