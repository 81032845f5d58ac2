#include "model/chooseLanguage.h"

#include <gtest/gtest.h>

namespace {

QStringList texts(const QList<const char *> &list)
{
    QStringList made;
    for (const char *text : list) {
        made << QLatin1String(text);
    }
    return made;
}

TEST(ChooseLanguage, prefersTheUserThenTheSystemThenEnglish)
{
    const struct {
        const char *preference;
        QList<const char *> offered;
        QList<const char *> system;
        const char *code;
    } rows[] = {
        {"de", {"en", "de"}, {"fr-FR"}, "de"},
        {"DE", {"en", "de"}, {}, "en"},
        {"", {"en", "fr"}, {"de-CH", "fr"}, "fr"},
        {"", {"en", "pt"}, {"pt_BR.UTF-8"}, "pt"},
        {"", {"en", "pt"}, {"--PT-br"}, "pt"},
        {"", {"en", "ru"}, {"zh-Hans-CN"}, "en"},
        {"it", {"en", "ru"}, {"ru-RU"}, "ru"},
        {"", {"en", "ru"}, {"", "-", "ru"}, "ru"},
        {"", {"ru"}, {}, "en"},
    };
    for (const auto &row : rows) {
        const QString code =
            chooseLanguage(QLatin1String(row.preference), texts(row.offered), texts(row.system));
        EXPECT_EQ(code, QLatin1String(row.code)) << row.preference << " in row " << &row - rows;
    }
}

} // namespace
