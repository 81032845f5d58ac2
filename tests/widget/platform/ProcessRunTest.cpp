#include "widget/platform/ProcessRun.h"

#include "awaited.h"
#include <cerrno>
#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <signal.h>

using namespace std::chrono_literals;

namespace {

std::unique_ptr<QProcess> shell(const char *script)
{
    auto process = std::make_unique<QProcess>();
    process->setProgram(QStringLiteral("/bin/sh"));
    process->setArguments({QStringLiteral("-c"), QLatin1String(script)});
    return process;
}

TEST(ProcessRun, tellsHowAProgramEndsAndWhatItSays)
{
    const QByteArray large(5'000'000, 'x');
    const struct {
        const char *script;
        ProcessRun::Options options;
        ProcessResult result;
    } rows[] = {
        {"echo a; echo b >&2; exit 127", {}, {127, "a\n"}},
        {"echo a; kill -9 $$", {}, {9, "a\n"}},
        {"cat; echo end", {}, {0, "end\n"}},
        {"cat", {.input = large}, {0, large}},
        {"exec 0<&-; echo unread", {.input = large}, {0, "unread\n"}},
        {"exec sleep 600", {.patience = 1ms}, {9, {}}},
        {"cat; echo end", {.input = large, .outlivesParent = true}, {0, large + "end\n"}},
    };
    for (const auto &row : rows) {
        QObject owner;
        const auto ended = awaited(ProcessRun::start(shell(row.script), row.options, &owner));
        ASSERT_TRUE(ended && *ended) << row.script;
        EXPECT_EQ((*ended)->status, row.result.status) << row.script;
        EXPECT_TRUE((*ended)->output == row.result.output) << row.script;
    }
    QObject owner;
    const auto missing = awaited(programRunner()(QStringLiteral("/nowhere/x"), {}, &owner));
    ASSERT_TRUE(missing);
    EXPECT_FALSE(*missing);
}

TEST(ProcessRun, leavesNeitherAProcessNorItsZombieBehindItsOwner)
{
    for (const bool alreadyRuns : {false, true}) {
        auto owner = std::make_unique<QObject>();
        auto process = shell("trap '' TERM; exec sleep 600");
        QProcess *const running = process.get();
        const auto future = ProcessRun::start(std::move(process), {}, owner.get());
        EXPECT_TRUE(!alreadyRuns || running->waitForStarted());
        const auto id = static_cast<pid_t>(running->processId());
        ASSERT_GT(id, 0);
        owner.reset();
        EXPECT_NE(::kill(id, 0), 0);
        EXPECT_EQ(errno, ESRCH);
        EXPECT_TRUE(future.isCanceled() && future.resultCount() == 0);
    }
}

TEST(ProcessRun, letsAProgramGoOnThatMustNotStopHalfWay)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"done"_qs);
    auto owner = std::make_unique<QObject>();
    auto process = shell("read -r word; sleep 0.3; echo lost && echo \"$word\" >\"$0\"");
    process->setArguments(process->arguments() << file);
    const auto future = ProcessRun::start(
        std::move(process), {.input = "told\n", .outlivesParent = true}, owner.get());
    owner.reset(); // at once, before it has read anything
    EXPECT_TRUE(future.isCanceled() && future.resultCount() == 0);
    const auto written = [&file] {
        QFile done(file);
        return done.open(QIODevice::ReadOnly) && done.readAll() == "told\n";
    };
    EXPECT_TRUE(QTest::qWaitFor(written, 20'000));
}

} // namespace
