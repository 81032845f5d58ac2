#include "core/WidgetLog.h"

#include "core/Paths.h"
#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <thread>

namespace {

class Log : public testing::Test {
protected:
    void SetUp() override { QDir(Paths::dir()).removeRecursively(); }

    static QByteArray contents()
    {
        QFile file(Paths::log());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// A log of exactly `size` bytes in lines of ten bytes, so that no cut meets a line's end by
    /// luck.
    static void fill(qsizetype size)
    {
        QDir().mkpath(Paths::dir());
        QFile file(Paths::log());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("012345678\n").repeated(size / 10 + 1).right(size));
    }

    static QByteArray afterWriting(const char *message)
    {
        WidgetLog::write(QLatin1String(message));
        WidgetLog::flush();
        return contents();
    }
};

TEST_F(Log, makesItsFolderAndStampsLines)
{
    const QByteArray text = afterWriting("first");
    const QRegularExpression line(
        QStringLiteral(R"(\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\+0[12]:00 first\n\z)"));
    EXPECT_TRUE(line.match(QString::fromUtf8(text)).hasMatch()) << text.constData();
    EXPECT_EQ(QFile::permissions(Paths::dir()) & (QFile::ReadOther | QFile::ReadGroup), 0);
    EXPECT_EQ(QFile::permissions(Paths::log()) & (QFile::ReadOther | QFile::ReadGroup), 0);
}

TEST_F(Log, isTrimmedOnlyBeyondItsBound)
{
    fill(262'144);
    EXPECT_TRUE(afterWriting("kept").startsWith("678\n"));
    EXPECT_GT(contents().size(), 262'144);

    fill(262'145);
    const QByteArray trimmed = afterWriting("newest");
    const qsizetype ownLine = trimmed.size() - trimmed.lastIndexOf('\n', -2) - 1;
    EXPECT_TRUE(trimmed.startsWith("012345678\n")) << "the first kept line is whole";
    EXPECT_TRUE(trimmed.endsWith(" newest\n"));
    EXPECT_LE(trimmed.size() - ownLine, 131'072);
    EXPECT_GT(trimmed.size() - ownLine, 131'072 - 10);
}

TEST_F(Log, keepsTheTailOfALogWithoutLines)
{
    QDir().mkpath(Paths::dir());
    QFile file(Paths::log());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(300'000, 'x'));
    file.close();
    const QByteArray trimmed = afterWriting("line");
    EXPECT_EQ(trimmed.count('x'), 131'072);
    EXPECT_TRUE(trimmed.startsWith('x') && trimmed.endsWith(" line\n"));
}

TEST_F(Log, keepsTheOrderOfCalls)
{
    std::thread other([] {
        for (int i = 0; i < 200; ++i) {
            WidgetLog::write(QStringLiteral("other %1").arg(i));
        }
    });
    for (int i = 0; i < 200; ++i) {
        WidgetLog::write(QStringLiteral("main %1").arg(i));
    }
    other.join();
    WidgetLog::flush();

    QHash<QByteArray, int> next;
    const QList<QByteArray> lines = contents().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 3) {
            EXPECT_EQ(words[2].toInt(), next[words[1]]++) << line.constData();
        }
    }
    EXPECT_EQ(next.value("main"), 200);
    EXPECT_EQ(next.value("other"), 200);
}

TEST_F(Log, neverFailsItsCaller)
{
    // A file where the folder should be: nothing can be written, and nothing is said.
    QFile obstacle(Paths::dir());
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    EXPECT_EQ(afterWriting("lost"), QByteArray());
    obstacle.remove();
    EXPECT_TRUE(afterWriting("found").endsWith(" found\n"));
}

} // namespace
