#include "widget/core/WidgetLog.h"

#include "TestFiles.h"
#include "widget/core/Paths.h"
#include <QRegularExpression>

namespace {

class Log : public testing::Test {
protected:
    void SetUp() override { QDir(Paths::dir()).removeRecursively(); }

    static QByteArray contents()
    {
        QFile file(Paths::log());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static QByteArray afterWriting(const char *message)
    {
        WidgetLog::write(QLatin1String(message));
        WidgetLog::flush();
        return contents();
    }
};

TEST_F(Log, isForItsUserAloneAndNeverFailsItsCaller)
{
    writeFile(Paths::dir(), ""); // a file where the folder should be
    EXPECT_EQ(afterWriting("lost"), QByteArray());
    ASSERT_TRUE(QFile::remove(Paths::dir()));
    const QByteArray text = afterWriting("first");
    const QRegularExpression line(
        QStringLiteral(R"(\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\+0[12]:00 first\n\z)"));
    EXPECT_TRUE(line.match(QString::fromUtf8(text)).hasMatch()) << text.constData();
    EXPECT_EQ(QFile::permissions(Paths::dir()) & (QFile::ReadOther | QFile::ReadGroup), 0);
    EXPECT_EQ(QFile::permissions(Paths::log()) & (QFile::ReadOther | QFile::ReadGroup), 0);
}

TEST_F(Log, isTrimmedToWholeLinesOnlyBeyondItsBound)
{
    // Lines of ten bytes, so that no cut meets a line's end by luck.
    const QByteArray lines = QByteArray("012345678\n").repeated(26'215).right(262'145);
    writeFile(Paths::log(), lines.mid(1));
    EXPECT_TRUE(afterWriting("kept").startsWith(lines.mid(1)));

    writeFile(Paths::log(), lines);
    const QByteArray trimmed = afterWriting("newest");
    const qsizetype ownLine = trimmed.size() - trimmed.lastIndexOf('\n', -2) - 1;
    EXPECT_TRUE(trimmed.startsWith("012345678\n")) << "the first kept line is whole";
    EXPECT_TRUE(trimmed.endsWith(" newest\n"));
    EXPECT_LE(trimmed.size() - ownLine, 131'072);
    EXPECT_GT(trimmed.size() - ownLine, 131'072 - 10);

    writeEndless(Paths::log());
    QFile file(Paths::log());
    ASSERT_TRUE(file.open(QIODevice::Append) && file.write("\nlast\n") == 6);
    file.close();
    EXPECT_TRUE(afterWriting("after").startsWith("last\n")) << "the rest is not read";

    writeFile(Paths::log(), QByteArray(300'000, 'x'));
    const QByteArray tail = afterWriting("line");
    EXPECT_EQ(tail.count('x'), 131'072) << "of a log without lines";
    EXPECT_TRUE(tail.startsWith('x') && tail.endsWith(" line\n"));
}

} // namespace
