#include "widget/app/FakeNode.h"
#include <csignal>
#include <QProcess>
#include <QtTest/QTest>

namespace {

TEST(Ending, goesTheOrdinaryWayAndTakesTheScriptAlong)
{
    QDir(Paths::dir()).removeRecursively();
    // Says that it runs, then that it was asked to end; alone it would go on.
    installIndexer("cd \"$HOME/.kestrelbay\"; trap 'touch ended; exit 0' TERM\n"
                   "touch started; while :; do sleep 0.05; done\n");
    // The hook of Codex must not stop half-way, whoever listens.
    QDir().mkpath(Paths::codexHome());
    writeFile(Paths::codexHook(),
        "cd \"$HOME/.kestrelbay\"; trap 'exit 1' TERM\n"
        "while [ ! -e ended ]; do sleep 0.05; done; sleep 0.3; echo said && touch hooked\n");
    writeFile(Paths::state(), R"({"updateCheck":false})"); // no test asks anybody for anything
    const QDir data(Paths::dir());
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        QFile::remove(data.filePath(QStringLiteral("started")));
        QFile::remove(data.filePath(QStringLiteral("ended")));
        QFile::remove(data.filePath(QStringLiteral("hooked")));
        QProcess widget;
        widget.start(qEnvironmentVariable("KESTRELBAY_BUILD") % u"/bin/kestrelbay", QStringList());
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return data.exists(QStringLiteral("started")); }, 20'000));
        ASSERT_EQ(kill(static_cast<pid_t>(widget.processId()), signal), 0);
        ASSERT_TRUE(widget.waitForFinished(20'000));
        EXPECT_EQ(widget.exitStatus(), QProcess::NormalExit) << signal;
        EXPECT_EQ(widget.exitCode(), 0) << signal << widget.readAllStandardError().constData();
        EXPECT_TRUE(data.exists(QStringLiteral("ended"))) << signal;
        EXPECT_TRUE(QTest::qWaitFor([&] { return data.exists(QStringLiteral("hooked")); }, 20'000));
    }
}

} // namespace
