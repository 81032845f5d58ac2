#include "core/Paths.h"

#include <gtest/gtest.h>

namespace {

// CODEX_HOME must be set before the first use of any path, so it is set for the whole program.
const bool codexHomeSet = qputenv("CODEX_HOME", "relative/./codex dir/");

TEST(Paths, followTheUserDatabaseAndNotHome)
{
    ASSERT_TRUE(codexHomeSet);
    const QString home = qEnvironmentVariable("HOME");
    qputenv("HOME", "/nowhere");
    EXPECT_EQ(Paths::home(), home);
    qputenv("HOME", home.toUtf8());
    EXPECT_EQ(Paths::limits(), QString(home % u"/.claude/usage-limits.json"));
    EXPECT_EQ(Paths::codexLimits(), QString(home % u"/.kestrelbay/codex-limits.json"));
    EXPECT_EQ(Paths::launchAgent(),
        QString(home % u"/.config/autostart/dev.harrowgate.kestrelbay.desktop"));
}

TEST(Paths, takeCodexHomeAsItStandsAndOnlyOnce)
{
    EXPECT_EQ(Paths::codexHome(), QLatin1String("relative/./codex dir/"));
    qunsetenv("CODEX_HOME");
    EXPECT_EQ(Paths::codexHome(), QLatin1String("relative/./codex dir/"));
}

} // namespace
