#include "text/Strings.h"

#include <gtest/gtest.h>

namespace {

const TranslationTable table {
    {u"en"_qs,
        {{u"culture"_qs, u"en-GB"_qs}, {u"tabDays"_qs, u"Days"_qs}, {u"week"_qs, u"Week"_qs},
            {u"both"_qs, u"{0} of {1}"_qs}, {u"twice"_qs, u"{0}, {0} and {10}"_qs}}},
    {u"de"_qs, {{u"culture"_qs, u"de-DE"_qs}, {u"week"_qs, u"Woche"_qs}, {u"empty"_qs, u""_qs}}},
    {u"fr"_qs, {}},
};

TEST(Strings, fallBackToEnglishThenToTheKeyOrDefault)
{
    const Strings german(u"de"_qs, table);
    EXPECT_EQ(german.t(u"week"_qs), u"Woche");
    EXPECT_EQ(german.t(u"tabDays"_qs), u"Days");
    EXPECT_EQ(german.t(u"tabWeeks"_qs), u"tabWeeks");
    EXPECT_EQ(german.text(u"tabDays"_qs, u"By day"_qs), u"Days");
    EXPECT_EQ(german.text(u"empty"_qs, u"something"_qs), u"");
    EXPECT_EQ(german.culture(), u"de-DE");
    EXPECT_EQ(Strings(u"fr"_qs, table).culture(), u"en-GB");
    EXPECT_EQ(Strings(u"xx"_qs, {}).culture(), u"en-US");
    EXPECT_EQ(Strings(u"de"_qs, {}).text(u"syncNow"_qs, u"Sync now"_qs), u"Sync now");
}

TEST(Strings, fillPlaceholdersInTheOrderOfTheArguments)
{
    const Strings strings(u"en"_qs, table);
    EXPECT_EQ(strings.t(u"both"_qs, {u"a"_qs}), u"a of {1}");
    EXPECT_EQ(strings.t(u"both"_qs, {u"a"_qs, u"b"_qs, u"c"_qs}), u"a of b");
    // A later step fills what an earlier argument brought, not the other way round.
    EXPECT_EQ(strings.t(u"both"_qs, {u"{1}"_qs, u"{0}"_qs}), u"{0} of {0}");
    EXPECT_EQ(strings.t(u"twice"_qs, {u"\\1"_qs, u"b"_qs}), u"\\1, \\1 and {10}");
    EXPECT_EQ(strings.t(u"no{0}key"_qs, {u"a"_qs}), u"noakey");
}

} // namespace
