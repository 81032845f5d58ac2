#include "text/I18n.h"

#include "core/dataFolder.h"
#include "core/Paths.h"
#include <gtest/gtest.h>
#include <QFile>

namespace {

TranslationTable loaded(const QByteArray &bytes)
{
    EXPECT_TRUE(makeDataFolder());
    QFile file(Paths::i18n());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    return I18n::load();
}

const TranslationTable nothingButEnglish {{QStringLiteral("en"), {}}};

TEST(I18n, loadsATableOfTexts)
{
    const TranslationTable both {
        {QStringLiteral("de"), {{QStringLiteral("today"), QStringLiteral("Heute …")}}},
        {QStringLiteral("en"), {}},
    };
    EXPECT_EQ(loaded(R"({"en": {}, "de": {"today": "Heute …"}})"), both);
    EXPECT_EQ(loaded("\xEF\xBB\xBF"
                     R"({"de": {"today": "Heute …"}, "en": {}})"),
        both);
    EXPECT_EQ(loaded("{}"), TranslationTable());
}

TEST(I18n, takesOneWrongValueAnywhereAsNoTable)
{
    for (const char *bytes : {
             "",
             "\xEF\xBB\xBF",
             "null",
             "[]",
             "\"en\"",
             "{",
             "{\"en\": {\"a\": \"b\"}} x",
             R"([{"en": {"a": "b"}}])",
             R"({"en": {"a": "b"}, "de": null})",
             R"({"en": {"a": "b"}, "de": "Heute"})",
             R"({"en": {"a": "b"}, "de": [{"a": "b"}]})",
             R"({"en": {"a": "b", "c": 1}})",
             R"({"en": {"a": "b", "c": null}})",
             R"({"en": {"a": "b", "c": {"d": "e"}}})",
             "{\"en\": {\"a\": \"\xFF\"}}",
         }) {
        EXPECT_EQ(loaded(bytes), nothingButEnglish) << bytes;
    }
    ASSERT_TRUE(QFile::remove(Paths::i18n()));
    EXPECT_EQ(I18n::load(), nothingButEnglish);
}

TEST(I18n, listsKnownLanguagesFirst)
{
    const auto codesOf = [](const QStringList &languages) {
        TranslationTable table;
        for (const QString &language : languages) {
            table.insert(language, {});
        }
        return I18n::codes(table).join(u' ').toStdString();
    };
    EXPECT_EQ(codesOf({u"fr"_qs, u"en"_qs, u"xx"_qs, u"ko"_qs}), "en fr ko xx");
    EXPECT_EQ(
        codesOf({u"sv"_qs, u"de"_qs, u"EN"_qs, u""_qs, u"be"_qs, u"ru"_qs}), "ru de  EN be sv");
    EXPECT_EQ(codesOf({}), "");
}

} // namespace
