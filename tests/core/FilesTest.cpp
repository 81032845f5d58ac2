#include "core/modified.h"
#include "core/readJSON.h"

#include <gtest/gtest.h>
#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <sys/stat.h>

namespace {

class Files : public testing::Test {
protected:
    QString write(const QByteArray &bytes)
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path();
    }

    QString path() const { return m_folder.filePath(QStringLiteral("file.json")); }

private:
    QTemporaryDir m_folder;
};

TEST_F(Files, readWithoutAByteOrderMark)
{
    EXPECT_EQ(readJSON(write("{}")), QByteArray("{}"));
    EXPECT_EQ(readJSON(write("\xEF\xBB\xBF{}")), QByteArray("{}"));
    EXPECT_EQ(readJSON(write("\xEF\xBB\xBF\xEF\xBB\xBF")), QByteArray("\xEF\xBB\xBF"));
    EXPECT_EQ(readJSON(write("\xEF\xBB")), QByteArray("\xEF\xBB"));
    // Only a mark: empty, which is not the same as unreadable.
    const std::optional<QByteArray> onlyMark = readJSON(write("\xEF\xBB\xBF"));
    ASSERT_TRUE(onlyMark.has_value());
    EXPECT_TRUE(onlyMark->isEmpty());
}

TEST_F(Files, thatCannotBeReadAreNothing)
{
    EXPECT_EQ(readJSON(path()), std::nullopt);
    EXPECT_EQ(readJSON(QStringLiteral("/")), std::nullopt);
    // A named pipe without a writer would block for ever.
    ASSERT_EQ(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    EXPECT_EQ(readJSON(path()), std::nullopt);
}

TEST_F(Files, tellWhenTheyWereModified)
{
    EXPECT_EQ(modified(path()), std::nullopt);
    write("{}");
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(1772719629123);
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::Append));
    ASSERT_TRUE(file.setFileTime(moment, QFileDevice::FileModificationTime));
    file.close();
    EXPECT_EQ(modified(path()), TimePoint(std::chrono::milliseconds(1772719629123)));
}

} // namespace
