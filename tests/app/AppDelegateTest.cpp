#include "app/AppDelegate.h"

#include "app/FakeNode.h"
#include "FakeClock.h"
#include <QSignalSpy>
#include <QtTest/QTest>

namespace {

using namespace std::chrono_literals;

/// Counts its runs in a file and writes statistics with as many sessions.
constexpr const char *countingIndexer = R"sh(cd "$HOME/.kestrelbay"
echo run >> runs
printf '{"sessions":[%s]}' "$(sed 's/run/{}/' runs | paste -sd,)" > new
mv new stats.json
)sh";

class Delegate : public testing::Test {
protected:
    void SetUp() override
    {
        QDir(Paths::dir()).removeRecursively();
        installIndexer(countingIndexer);
    }

    [[nodiscard]] bool comesTo(qsizetype sessions)
    {
        return QTest::qWaitFor(
            [&] { return m_delegate.model().sessions().size() == sessions; }, 20'000);
    }

    FakeClock m_clock {TimePoint(1'772'708'400'000ms)};
    AppDelegate m_delegate {m_clock};
};

TEST_F(Delegate, indexesAtTheStartAndShowsWhatComes)
{
    m_delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(comesTo(1));
}

TEST_F(Delegate, indexesEveryTenMinutesAndWhenAsked)
{
    m_delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(comesTo(1));
    m_clock.advance(599s);
    m_delegate.tick();
    m_clock.advance(1s);
    m_delegate.tick();
    ASSERT_TRUE(comesTo(2));
    EXPECT_EQ(m_delegate.model().now(), m_clock.now());
    Q_EMIT m_delegate.actions().refreshRequested();
    ASSERT_TRUE(comesTo(3));
}

TEST_F(Delegate, noticesAChangedFileByItself)
{
    QFile::remove(Paths::indexer());
    m_delegate.applicationDidFinishLaunching();
    writeFile(Paths::stats(), R"({"sessions":[{},{},{},{}]})");
    EXPECT_TRUE(comesTo(4)) << "the heartbeat is running";
}

TEST_F(Delegate, doesWhatThePanelAsks)
{
    Q_EMIT m_delegate.actions().expandRequested();
    EXPECT_TRUE(m_delegate.model().expanded());
    Q_EMIT m_delegate.actions().expandRequested();
    EXPECT_FALSE(m_delegate.model().expanded());
    Q_EMIT m_delegate.actions().providerRequested(1);
    EXPECT_EQ(m_delegate.model().provider(), Provider::Codex);
}

} // namespace
