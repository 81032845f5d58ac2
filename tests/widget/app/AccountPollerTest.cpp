#include "widget/app/AccountPoller.h"

#include "FakeClock.h"
#include "TestFiles.h"
#include "widget/app/Promised.h"
#include "widget/core/Paths.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/WidgetModel.h"
#include "widget/scripts/SideFiles.h"
#include <QSignalSpy>

namespace {

using namespace std::chrono_literals;
using namespace AccountUsage;

class Poller : public testing::Test {
protected:
    void SetUp() override
    {
        WidgetLog::flush();
        QFile::remove(Paths::log());
        QFile::remove(Paths::limits());
    }

    static qsizetype linesLogged()
    {
        WidgetLog::flush();
        QFile file(Paths::log());
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }

    /// Whether a poll is started when one is allowed this often.
    bool polls(std::chrono::seconds minAge)
    {
        const std::size_t before = m_account.asked();
        m_poller.pollAccount(minAge);
        return m_account.asked() > before;
    }

    void fileFrom(std::chrono::seconds age)
    {
        const auto at = (m_clock.now() - age).time_since_epoch();
        static int stamp = 0;
        writeVersion(Paths::limits(),
            "{\"updatedAt\":" + QByteArray::number(qint64(at.count()))
                + ",\"fiveHour\":{\"percent\":10}}",
            ++stamp);
        ASSERT_TRUE(m_sides.readLimits());
    }

    FakeClock m_clock {TimePoint(1'772'708'400'000ms)};
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
    SideFiles m_sides {m_model};
    Promised<AccountOutcome> m_account;
    AccountPoller m_poller {m_sides, m_clock, [this](QObject *) { return m_account.ask(); }};
};

TEST_F(Poller, asksAsOftenAsIsAllowedAndOneAtATime)
{
    const struct {
        std::chrono::seconds passes;
        std::chrono::seconds minAge;
        bool asks;
    } rows[] = {
        {0s, 300s, true},
        {29s, 30s, false},
        {1s, 300s, false},
        {0s, 30s, true},
        {299s, 300s, false},
        {1s, 300s, true},
        {-86'400s, 300s, true}, // the clock was set back
        {86'400s, 300s, true},
    };
    for (const auto &row : rows) {
        m_clock.advance(row.passes);
        ASSERT_EQ(polls(row.minAge), row.asks) << m_account.asked();
        EXPECT_EQ(m_poller.pollingAccount(), row.asks);
        if (row.asks) {
            m_clock.advance(1h);
            EXPECT_FALSE(polls(30s)) << "an answer is awaited";
            m_clock.advance(-1h);
            m_account.answer(Unavailable());
        }
    }
}

TEST_F(Poller, trustsAFreshFile)
{
    fileFrom(10s);
    EXPECT_FALSE(polls(30s));
    fileFrom(40s);
    EXPECT_FALSE(polls(300s));
    EXPECT_TRUE(polls(30s));
    m_account.answer(Unavailable());
    m_clock.advance(1h);
    fileFrom(-86'400s);
    EXPECT_TRUE(polls(300s)) << "a file from the future";
}

TEST_F(Poller, leavesAnAccountAloneForAQuarterOfAnHourWhenToldTo)
{
    ASSERT_TRUE(polls(300s));
    m_account.answer(Throttled());
    m_clock.advance(899s);
    EXPECT_FALSE(polls(30s));
    m_clock.advance(1s);
    EXPECT_TRUE(polls(30s));
    m_account.lose();
    m_clock.advance(30s);
    EXPECT_TRUE(polls(30s)) << "what ends without an answer has ended";
    EXPECT_EQ(linesLogged(), 0);
}

TEST_F(Poller, showsReadingsWithTheFilesAndLogsRubbishOnce)
{
    QSignalSpy read(&m_poller, &AccountPoller::limitsRead);
    fileFrom(3600s);
    ASSERT_TRUE(polls(300s));
    m_account.answer(Limits {.fiveHour = Reading {70, {}}});
    EXPECT_EQ(read.size(), 1);
    EXPECT_EQ(m_model.limits()->fiveHour->percent, 70);
    for (int i = 0; i < 2; ++i) {
        m_clock.advance(300s);
        ASSERT_TRUE(polls(300s));
        m_account.answer(Malformed());
    }
    EXPECT_EQ(linesLogged(), 1);
    EXPECT_EQ(m_model.limits()->fiveHour->percent, 70);
    EXPECT_FALSE(m_poller.pollingAccount());
}

} // namespace
