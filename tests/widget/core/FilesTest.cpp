#include "TestFiles.h"
#include "widget/core/modified.h"
#include "widget/core/readJSON.h"

#include <cstring>
#include <QTemporaryDir>
#include <sys/stat.h>

namespace {

TEST(Files, areReadWithoutAByteOrderMarkOrNotAtAll)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file.json"));
    EXPECT_EQ(readJSON(path, 9), std::nullopt);
    EXPECT_EQ(modified(path), std::nullopt);
    EXPECT_EQ(readJSON(folder.path(), 9), std::nullopt);
    // A named pipe without a writer would block for ever.
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(readJSON(pipe, 9), std::nullopt);

    // Only a mark: empty, which is not the same as unreadable.
    const std::pair<const char *, const char *> rows[] = {{"{}", "{}"}, {"\xEF\xBB\xBF{}", "{}"},
        {"\xEF\xBB\xBF", ""}, {"\xEF\xBB\xBF\xEF\xBB\xBF", "\xEF\xBB\xBF"},
        {"\xEF\xBB", "\xEF\xBB"}};
    for (const auto &[bytes, text] : rows) {
        writeVersion(path, bytes, 1'772'719'629);
        const auto size = static_cast<qint64>(std::strlen(bytes));
        EXPECT_EQ(readJSON(path, size), QByteArray(text)) << bytes;
        EXPECT_EQ(readJSON(path, size - 1), std::nullopt) << bytes;
        EXPECT_EQ(modified(path), TimePoint(std::chrono::seconds(1'772'719'629)));
    }
}

} // namespace
