#include "widget/scripts/CodexHook.h"

#include "widget/app/FakeNode.h"
#include <QTest>

namespace {

TEST(CodexHook, isPutIntoTheWantedStateWhereCodexAndTheScriptAre)
{
    installIndexer({});
    const QString called = Paths::home() % u"/called";
    CodexHook hook;
    const auto runs = [&hook](bool launchWithCodex) {
        hook.applyCodexHook(launchWithCodex);
        const bool begun = !hook.children().isEmpty();
        EXPECT_TRUE(QTest::qWaitFor([&hook] { return hook.children().isEmpty(); }, 20'000));
        return begun;
    };
    EXPECT_FALSE(runs(true));
    writeFile(Paths::codexHook(), "echo \"$*\" >> '" + called.toUtf8() + "'; cat; exit 3\n");
    EXPECT_FALSE(runs(true));
    QDir().mkpath(Paths::codexHome());
    EXPECT_TRUE(runs(true));
    // Of what is asked for while the script runs, the last counts.
    for (const bool on : {true, false, false}) {
        hook.applyCodexHook(on);
    }
    EXPECT_TRUE(runs(true));
    QFile file(called);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("on\non\non\n"));
}

} // namespace
