#include "text/I18n.h"

#include "core/Paths.h"
#include "TestFiles.h"

namespace {

TranslationTable loaded(const QByteArray &bytes)
{
    writeFile(Paths::i18n(), bytes);
    return I18n::load();
}

TEST(I18n, loadsATableOfTextsWithAndWithoutAByteOrderMark)
{
    const TranslationTable both {{u"de"_qs, {{u"today"_qs, u"Heute …"_qs}}}, {u"en"_qs, {}}};
    const QByteArray bytes = R"({"en": {}, "de": {"today": "Heute …"}})";
    EXPECT_EQ(loaded(bytes), both);
    EXPECT_EQ(loaded("\xEF\xBB\xBF" + bytes), both);
}

TEST(I18n, takesOneWrongValueAnywhereAsNoTable)
{
    const TranslationTable nothingButEnglish {{u"en"_qs, {}}};
    for (const char *bytes : {"", "null", R"([{"en": {"a": "b"}}])", R"({"en": {"a": "b"})",
             R"({"en": {"a": "b"}} x)", R"({"en": {"a": "b"}, "de": null})",
             R"({"en": {"a": "b"}, "de": "Heute"})", R"({"en": {"a": "b"}, "de": [{"a": "b"}]})",
             R"({"en": {"a": "b", "c": 1}})", R"({"en": {"a": "b", "c": null}})",
             R"({"en": {"a": "b", "c": {"d": "e"}}})", "{\"en\": {\"a\": \"\xFF\"}}"}) {
        EXPECT_EQ(loaded(bytes), nothingButEnglish) << bytes;
    }
    ASSERT_TRUE(QFile::remove(Paths::i18n()));
    EXPECT_EQ(I18n::load(), nothingButEnglish);
}

TEST(I18n, listsKnownLanguagesFirst)
{
    const TranslationTable some {{u"fr"_qs, {}}, {u"en"_qs, {}}, {u"xx"_qs, {}}, {u"ko"_qs, {}}};
    EXPECT_EQ(I18n::codes(some).join(u' '), u"en fr ko xx");
}

} // namespace
