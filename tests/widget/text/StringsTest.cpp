#include "widget/text/Strings.h"

#include "TestFiles.h"
#include "widget/core/Paths.h"

namespace {

TranslationTable loaded(const QByteArray &bytes)
{
    writeFile(Paths::i18n(), bytes);
    return I18n::load();
}

TEST(I18n, takesOneWrongValueAnywhereAsNoTable)
{
    const TranslationTable both {{u"de"_qs, {{u"today"_qs, u"Heute …"_qs}}}, {u"en"_qs, {}}};
    EXPECT_EQ(loaded("\xEF\xBB\xBF{\"en\": {}, \"de\": {\"today\": \"Heute …\"}}"), both);
    const TranslationTable nothingButEnglish {{u"en"_qs, {}}};
    for (const char *bytes :
        {"", "null", R"([{"en": {"a": "b"}}])", R"({"en": {"a": "b"})", R"({"en": {"a": "b"}} x)",
            R"({"en": {"a": "b"}, "de": null})", R"({"en": {"a": "b"}, "de": [{"a": "b"}]})",
            R"({"en": {"a": "b", "c": 1}})", "{\"en\": {\"a\": \"\xFF\"}}"}) {
        EXPECT_EQ(loaded(bytes), nothingButEnglish) << bytes;
    }
    writeEndless(Paths::i18n());
    EXPECT_EQ(I18n::load(), nothingButEnglish);
    ASSERT_TRUE(QFile::remove(Paths::i18n()));
    EXPECT_EQ(I18n::load(), nothingButEnglish);
}

TEST(I18n, listsKnownLanguagesFirst)
{
    const TranslationTable some {{u"fr"_qs, {}}, {u"en"_qs, {}}, {u"xx"_qs, {}}, {u"ko"_qs, {}}};
    EXPECT_EQ(I18n::codes(some).join(u' '), u"en fr ko xx");
}

TEST(Strings, fallBackToEnglishThenToTheKeyOrDefault)
{
    const TranslationTable table {
        {u"en"_qs, {{u"culture"_qs, u"en-GB"_qs}, {u"tabDays"_qs, u"Days"_qs}}},
        {u"de"_qs,
            {{u"culture"_qs, u"de-DE"_qs}, {u"week"_qs, u"Woche"_qs}, {u"empty"_qs, u""_qs}}}};
    const Strings german(u"de"_qs, table);
    EXPECT_EQ(german.t(u"week"_qs), u"Woche");
    EXPECT_EQ(german.t(u"tabDays"_qs), u"Days");
    EXPECT_EQ(german.t(u"tabWeeks"_qs), u"tabWeeks");
    EXPECT_EQ(german.text(u"tabDays"_qs, u"By day"_qs), u"Days");
    EXPECT_EQ(german.text(u"empty"_qs, u"something"_qs), u"");
    EXPECT_EQ(german.text(u"syncNow"_qs, u"Sync now"_qs), u"Sync now");
    EXPECT_EQ(german.culture(), u"de-DE");
    EXPECT_EQ(Strings(u"fr"_qs, table).culture(), u"en-GB");
    EXPECT_EQ(Strings(u"xx"_qs, {}).culture(), u"en-US");
}

TEST(Strings, fillPlaceholdersInTheOrderOfTheArguments)
{
    const Strings keys(u"en"_qs, {}); // which are shown where there is no text
    const QString both = u"{0} of {1}"_qs;
    EXPECT_EQ(keys.t(both, {u"a"_qs}), u"a of {1}");
    EXPECT_EQ(keys.t(both, {u"a"_qs, u"b"_qs, u"c"_qs}), u"a of b");
    // A later step fills what an earlier argument brought, not the other way round.
    EXPECT_EQ(keys.t(both, {u"{1}"_qs, u"{0}"_qs}), u"{0} of {0}");
    EXPECT_EQ(keys.t(u"{0}, {0} and {10}"_qs, {u"\\1"_qs, u"b"_qs}), u"\\1, \\1 and {10}");
}

} // namespace
