#include "widget/core/Paths.h"

#include <gtest/gtest.h>

namespace {

// CODEX_HOME must be set before the first use of any path, so it is set for the whole program.
const bool codexHomeSet = qputenv("CODEX_HOME", "relative/./codex dir/");

TEST(Paths, followTheUserDatabaseAndNotHome)
{
    const QString home = qEnvironmentVariable("HOME");
    qputenv("HOME", "/nowhere");
    EXPECT_EQ(Paths::home(), home);
    qputenv("HOME", home.toUtf8());
    EXPECT_EQ(Paths::limits(), QString(home % u"/.claude/usage-limits.json"));
    EXPECT_EQ(Paths::codexLimits(), QString(home % u"/.kestrelbay/codex-limits.json"));
    // As it stands, and read only once.
    ASSERT_TRUE(codexHomeSet && !Paths::codexHome().isEmpty() && qunsetenv("CODEX_HOME"));
    EXPECT_EQ(Paths::codexHome(), u"relative/./codex dir/");
}

} // namespace
