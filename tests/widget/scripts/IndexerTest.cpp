#include "widget/scripts/Indexer.h"

#include "widget/app/FakeNode.h"
#include "widget/scripts/DataFolder.h"
#include <QSignalSpy>

namespace {

class IndexerRuns : public DataFolder {
protected:
    int statusOfRun()
    {
        QSignalSpy finished(&m_indexer, &Indexer::finished);
        m_indexer.startIndexer();
        EXPECT_TRUE(m_indexer.running());
        m_indexer.startIndexer(); // one at a time
        EXPECT_TRUE(finished.wait(20'000));
        EXPECT_EQ(finished.size(), 1);
        return finished.at(0).at(0).toInt();
    }

    Indexer m_indexer {m_model, m_clock};
};

TEST_F(IndexerRuns, needAScriptAndPreferThatOfTheSync)
{
    m_indexer.startIndexer();
    EXPECT_FALSE(m_indexer.running());
    EXPECT_EQ(m_indexer.lastIndex(), TimePoint());
    EXPECT_EQ(logged(), QByteArray());
    installIndexer("exit 1\n");
    EXPECT_EQ(statusOfRun(), 1);
    EXPECT_EQ(m_indexer.lastIndex(), m_clock.now());
    writeFile(Paths::sync(), "exit 0\n");
    EXPECT_EQ(statusOfRun(), 0);
}

TEST_F(IndexerRuns, logFailuresAndTellOfAMissingNode)
{
    const std::tuple<const char *, int, const char *> rows[] = {{"exit 0", 0, ""},
        {"exit 3", 3, " indexer exited with status 3\n"},
        {"exit 127", 127, " indexer exited with status 127 (node not found)\n"},
        {"kill -9 $$", 9, " indexer exited with status 9\n"}};
    for (const auto &[script, status, message] : rows) {
        installIndexer(script);
        const qsizetype before = logged().size();
        EXPECT_EQ(statusOfRun(), status) << script;
        EXPECT_EQ(m_model.noNode(), status == 127) << script;
        EXPECT_EQ(m_model.note() == m_model.t(QStringLiteral("collecting")), status == 0);
        const QByteArray line = logged().mid(before);
        EXPECT_TRUE(line.endsWith(message)) << line.constData();
        EXPECT_EQ(line.isEmpty(), status == 0) << line.constData();
    }
}

TEST_F(IndexerRuns, endOneThatNeverDoes)
{
    installIndexer("sleep 600; true\n");
    QSignalSpy finished(&m_indexer, &Indexer::finished);
    m_indexer.startIndexer();
    for (const int seconds : {-60, 3659}) { // the clock is set back, then goes on
        m_clock.advance(std::chrono::seconds(seconds));
        m_indexer.startIndexer();
        EXPECT_FALSE(finished.wait(100));
    }
    m_clock.advance(std::chrono::seconds(1));
    m_indexer.startIndexer();
    EXPECT_TRUE(finished.wait(20'000));
    EXPECT_FALSE(m_indexer.running());
    EXPECT_TRUE(logged().endsWith(
        " indexer exited with status 9 (ended by us, as it ran for over an hour)\n"));
}

} // namespace
