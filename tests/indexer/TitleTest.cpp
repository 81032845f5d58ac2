#include "indexer/Title.h"

#include <gtest/gtest.h>

namespace {

using namespace indexer;

std::string repeated(const std::string &text, std::size_t times)
{
    std::string result;
    for (std::size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

TEST(Title, isOneTidyLine)
{
    const struct {
        std::string token;
        std::string title;
    } rows[] = {
        {R"("Fix it")", "Fix it"},
        {R"("  a \t\r\n b\u0000c\u001b[0m  ")", "a b c [0m"},
        {R"("\" \\ \/ caf\u00e9 \u4f60 \ud83d\ude00 é😀")", "\" \\ / café 你 😀 é😀"},
        {R"("cut \ud83d")", "cut \xEF\xBF\xBD"},
        {R"("\ude00\ud83dx\ud83d\u0041")",
            "\xEF\xBF\xBD\xEF\xBF\xBDx\xEF\xBF\xBD"
            "A"},
        {R"("\u202eevil\u2028line\u00a0end\ufeff")", "evil line end"},
        {R"("\u2066 1\u00ad2\u061c3\u200e4\u200f5\u202a6\u202c7\u2069")", "1234567"},
        {R"("")", ""},
        {R"(" \n\u200b ")", ""},
        {'"' + repeated("é", 250) + '"', repeated("é", 200)},
        {'"' + repeated("x", 199) + " yz\"", repeated("x", 199)},
        {'"' + repeated("x", 198) + "  yz\"", repeated("x", 198) + " y"},
        {'"' + repeated("\\ud83d\\ude00", 300) + '"', repeated("😀", 200)},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(tidyTitle(row.token), row.title) << row.token;
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

TEST(Title, leavesBackslashesInNames)
{
    EXPECT_EQ(tidyName("a\\n  b\x1b\u202ec\u00adé😀"), "a\\n b cé😀");
}

TEST(Title, takesTheFoldersNameFromItsPath)
{
    const struct {
        const char *path;
        const char *name;
    } rows[] = {
        {"/home/u/my project", "my project"},
        {"/home/u/proj//", "proj"},
        {R"(C:\Users\u\proj)", "proj"},
        {R"(c:/Users/u\proj\)", "proj"},
        {R"(\\server\share\proj)", "proj"},
        {R"(/home/u/a\b)", R"(a\b)"},
        {"/", "/"},
        {"proj", "proj"},
        {"", ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(folderName(row.path), row.name) << row.path;
    }
}

} // namespace
