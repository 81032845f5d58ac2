#include "scripts/Indexer.h"

#include "core/Paths.h"
#include "core/WidgetLog.h"
#include "FakeClock.h"
#include "model/WidgetModel.h"
#include "TestFiles.h"
#include <QSignalSpy>

namespace {

using namespace std::chrono;

QByteArray logged()
{
    WidgetLog::flush();
    QFile file(Paths::log());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class IndexerRuns : public testing::Test {
protected:
    void SetUp() override
    {
        WidgetLog::flush();
        QDir(Paths::dir()).removeRecursively();
        // The fake node interprets our scripts as shell, so that no test depends on a real one.
        writeFile(QDir(Paths::home()).filePath(QStringLiteral(".profile")),
            "PATH=\"$HOME/tools:/usr/bin:/bin\"\n");
        writeFile(QDir(Paths::home()).filePath(QStringLiteral(".zprofile")),
            "PATH=\"$HOME/tools:/usr/bin:/bin\"\n");
        writeProgram(QDir(Paths::home()).filePath(QStringLiteral("tools/node")),
            "#!/bin/sh\nexec sh \"$@\"\n");
    }

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

    FakeClock m_clock {sys_days(2026y / 3 / 5)};
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
    Indexer m_indexer {m_model, m_clock};
};

TEST_F(IndexerRuns, needAScript)
{
    m_indexer.startIndexer();
    EXPECT_FALSE(m_indexer.running());
    EXPECT_EQ(m_indexer.lastIndex(), TimePoint());
    EXPECT_EQ(logged(), QByteArray());
}

TEST_F(IndexerRuns, preferTheSyncScript)
{
    writeFile(Paths::indexer(), "exit 1\n");
    EXPECT_EQ(statusOfRun(), 1);
    EXPECT_EQ(m_indexer.lastIndex(), m_clock.now());
    writeFile(Paths::sync(), "exit 0\n");
    EXPECT_EQ(statusOfRun(), 0);
}

TEST_F(IndexerRuns, logFailuresAndTellOfAMissingNode)
{
    const struct {
        const char *script;
        int status;
        bool noNode;
        const char *line;
    } rows[] = {
        {"exit 0", 0, false, ""},
        {"exit 3", 3, false, " indexer exited with status 3\n"},
        {"exit 127", 127, true, " indexer exited with status 127 (node not found)\n"},
        {"kill -9 $$", 9, false, " indexer exited with status 9\n"},
    };
    for (const auto &row : rows) {
        writeFile(Paths::indexer(), row.script);
        const qsizetype before = logged().size();
        EXPECT_EQ(statusOfRun(), row.status) << row.script;
        EXPECT_EQ(m_model.noNode(), row.noNode) << row.script;
        EXPECT_EQ(m_model.note() == m_model.t(QStringLiteral("collecting")), row.status == 0);
        const QByteArray line = logged().mid(before);
        EXPECT_TRUE(line.endsWith(row.line)) << line.constData();
        EXPECT_EQ(line.isEmpty(), row.status == 0) << line.constData();
    }
}

TEST_F(IndexerRuns, endOneThatNeverDoes)
{
    writeFile(Paths::indexer(), "sleep 600; true\n");
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
}

} // namespace
