#include "widget/platform/openPage.h"

#include "TestFiles.h"
#include "widget/platform/keepPrivate.h"
#include <QTemporaryDir>
#include <QTest>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

TEST(OpenPage, startsTheBrowserAsTheUserWould)
{
    const QTemporaryDir folder;
    const QString told = folder.filePath(QStringLiteral("told"));
    const QByteArray file = QFile::encodeName(told);
    writeProgram(folder.filePath(QStringLiteral("xdg-open")),
        "#!/bin/sh\n(echo \"$@\"; umask; ulimit -S -c) > " + file + ".new\nmv " + file + ".new "
            + file + "\n");
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.path()) + ':' + path);
    rlimit core {};
    ASSERT_EQ(::getrlimit(RLIMIT_CORE, &core), 0);
    const rlimit users {std::min<rlim_t>(core.rlim_max, 7 * 512), core.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_CORE, &users), 0);
    const mode_t umask = ::umask(0027);

    keepPrivate();
    openPage(QUrl(QStringLiteral("https://localhost/download/?a=b c&d=\u00E4")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(told); }, 20'000));
    EXPECT_EQ(::umask(umask), 0077U) << "nothing changes here";
    ::setrlimit(RLIMIT_CORE, &core);
    qputenv("PATH", path);

    QFile answer(told);
    ASSERT_TRUE(answer.open(QIODevice::ReadOnly));
    EXPECT_EQ(answer.readAll(),
        QByteArray("https://localhost/download/?a=b%20c&d=%C3%A4\n0027\n"
            + QByteArray::number(qulonglong(users.rlim_cur / 512)) + '\n'));
}

} // namespace
