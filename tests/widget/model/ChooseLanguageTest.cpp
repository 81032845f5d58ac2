#include "widget/model/chooseLanguage.h"

#include <gtest/gtest.h>

namespace {

TEST(ChooseLanguage, prefersTheUserThenTheSystemThenEnglish)
{
    // Preference, languages on offer, the system's; then the choice.
    const std::tuple<QString, QStringList, QStringList, QString> rows[] = {
        {u"de"_qs, {u"en"_qs, u"de"_qs}, {u"fr-FR"_qs}, u"de"_qs},
        {u"DE"_qs, {u"en"_qs, u"de"_qs}, {}, u"en"_qs},
        {{}, {u"en"_qs, u"fr"_qs}, {u"de-CH"_qs, u"fr"_qs}, u"fr"_qs},
        {{}, {u"en"_qs, u"pt"_qs}, {u"pt_BR.UTF-8"_qs}, u"pt"_qs},
        {{}, {u"en"_qs, u"pt"_qs}, {u"zh-Hans-CN"_qs, {}, u"-"_qs, u"--PT-br"_qs}, u"pt"_qs},
        {u"it"_qs, {u"en"_qs, u"ru"_qs}, {u"ru-RU"_qs}, u"ru"_qs}, {{}, {u"ru"_qs}, {}, u"en"_qs}};
    for (const auto &[preference, offered, system, code] : rows) {
        EXPECT_EQ(chooseLanguage(preference, offered, system), code)
            << preference.toStdString() << " with " << system.join(u' ').toStdString();
    }
}

} // namespace
