#include "scripts/CodexHook.h"

#include "core/Paths.h"
#include "TestFiles.h"
#include <QTest>

namespace {

TEST(CodexHook, isPutIntoTheWantedStateWhereCodexAndTheScriptAre)
{
    // The fake node interprets our script as shell, so that no test depends on a real one.
    for (const char *profile : {"/.profile", "/.zprofile"}) {
        writeFile(Paths::home() % QLatin1String(profile), "PATH=\"$HOME/tools:/usr/bin:/bin\"\n");
    }
    writeProgram(Paths::home() % u"/tools/node", "#!/bin/sh\nexec sh \"$@\"\n");
    const QString called = Paths::home() % u"/called";
    const QByteArray script = "echo \"$*\" >> '" + called.toUtf8() + "'; cat; exit 3\n";

    CodexHook hook;
    const auto runs = [&hook](bool launchWithCodex) {
        hook.applyCodexHook(launchWithCodex);
        const bool begun = !hook.children().isEmpty();
        EXPECT_TRUE(QTest::qWaitFor([&hook] { return hook.children().isEmpty(); }, 20'000));
        return begun;
    };
    EXPECT_FALSE(runs(true));
    writeFile(Paths::codexHook(), script);
    EXPECT_FALSE(runs(true));
    QDir().mkpath(Paths::codexHome());
    EXPECT_TRUE(runs(true));
    EXPECT_TRUE(runs(false));
    // Of what is asked for while the script runs, the last counts.
    for (const bool on : {true, false, false}) {
        hook.applyCodexHook(on);
    }
    EXPECT_TRUE(runs(true));
    QFile::remove(Paths::codexHook());
    EXPECT_FALSE(runs(true));

    QFile file(called);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("on\noff\non\non\n"));
}

} // namespace
