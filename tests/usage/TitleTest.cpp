#include "usage/lines/Title.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace {

using namespace usage;

TEST(Title, isOneTidyLine)
{
    const std::pair<std::string, std::string> rows[] = {
        {R"("  a \t\r\n b\u0000c\u001b[0m  ")", "a b c [0m"},
        {R"("\" \\ \/ caf\u00e9 \u4f60 \ud83d\ude00 é😀")", "\" \\ / café 你 😀 é😀"},
        {R"("cut \ud83d")", "cut \xEF\xBF\xBD"},
        {R"("\ude00\ud83dx\ud83d\u0041")",
            "\xEF\xBF\xBD\xEF\xBF\xBDx\xEF\xBF\xBD"
            "A"},
        {R"("\u202eevil\u2028line\u00a0end\ufeff")", "evil line end"},
        {R"("\u2066 1\u00ad2\u061c3\u200e4\u200f5\u202a6\u202c7\u2069")", "1234567"},
        // At most 200 characters, and no space at the end.
        {'"' + fmt::format("{:x<199}", "") + " yz\"", fmt::format("{:x<199}", "")},
        {'"' + fmt::format("{:x<198}", "") + "  yz\"", fmt::format("{:x<198} y", "")},
        {'"' + fmt::format("{:😀<300}", "") + '"', fmt::format("{:😀<200}", "")},
    };
    for (const auto &[token, title] : rows) {
        EXPECT_EQ(tidyTitle(token), title) << token;
    }
}

TEST(Title, knowsWhatTheUserWrote)
{
    for (const char *real : {R"("Fix it")", R"("  \n why?")", R"("é")", R"("< 5 is wrong")",
             R"("<3")", R"("<")", R"("Caveats apply")", R"("\u0041")", R"("a<command-name>")",
             R"("<div> is not centred")", R"("Caveat: the tests are slow")"}) {
        EXPECT_TRUE(isRealPrompt(real)) << real;
    }
    for (const char *other : {R"("<command-name>/clear</command-name>")",
             R"("\n <local-command-stdout>x")", R"("\u003csystem-reminder>x")",
             R"("Caveat: The messages below were")", R"("<bash-input>ls")", R"("<ide_selection>x")",
             R"("<task-notification>x")", R"("<user-prompt-submit-hook>x")",
             R"("[Request interrupted by user]")", R"("")", R"("  \n ")"}) {
        EXPECT_FALSE(isRealPrompt(other)) << other;
    }
}

TEST(Title, takesTheFoldersNameFromItsPath)
{
    const std::pair<const char *, const char *> rows[] = {{"/home/u/proj//", "proj"},
        {R"(c:/Users/u\proj\)", "proj"}, {R"(\\server\share\proj)", "proj"},
        {R"(/home/u/a\b)", R"(a\b)"}, {"/", "/"}, {"", ""}};
    for (const auto &[path, name] : rows) {
        EXPECT_EQ(folderName(path), name) << path;
    }
    EXPECT_EQ(tidyName("a\\n  b\x1b\u202ec\u00adé😀"), "a\\n b cé😀");
}

} // namespace
