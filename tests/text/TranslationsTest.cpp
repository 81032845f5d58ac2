#include "text/Strings.h"

#include "core/Paths.h"
#include "TestFiles.h"

namespace {

/// Every key that the program looks up, in lists by how many arguments their texts take.
const char *const vocabulary[] = {
    R"(langName culture now tabDays tabWeeks tabMonths tabSessions refreshTip statsTip settingsTitle
       pinTip unpinTip hideTip trayEmpty windowReset exhausted noData paceTip fiveHours week
       monthShort monthLong dayShort dayLong thisMonth lastMonth today yesterday thisWeek lastWeek
       collecting collectFailed needNode statsUnreadable noSessions history providers weekdayTime dayTime
       tokShort menuHide menuShow menuStats menuTopmost menuView menuViewIcon menuViewWindow
       menuUpdates menuAnimOff menuAnimOn menuWithWindows menuWithClaude menuWithCodex
       menuStatusLine menuLanguage menuSystem menuExit menuSettings menuNotch settingsGeneral
       settingsData settingsLaunch settingsCard settingsAnimations syncAbout syncThisDevice
       syncDeviceId syncCopy syncName syncSave syncPassword syncPasswordSet syncNewPassword
       syncPasswordPrompt syncPasswordAbout syncChange syncSet syncRemove syncLink syncUnlink
       syncLinked syncLinkedAbout syncOff syncOffNote syncNow syncNever syncDelete syncDeleteAbout
       syncDeleteTitle syncDeleteMessage syncDeleteConfirm syncCancel syncIsOff syncSelf syncBadId
       syncBadPassword syncTooMany syncWrong syncOffline syncFailed syncServer)",
    R"(minAgo hAgo dAgo dotTip updateTip runout weekOf tokens atTime spanM menuUpdate menuVersion
       syncAt syncSeen sessionYesterday sessionToday)",
    "resetIn spanDH spanHM",
    "periodNote",
};

/// The texts that are delivered beside the program, read as the program reads them.
TranslationTable delivered()
{
    QFile file(QStringLiteral(SHIPPED_TRANSLATIONS));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    writeFile(Paths::i18n(), file.readAll());
    return I18n::load();
}

TEST(Translations, haveExactlyTheVocabularyInEveryLanguage)
{
    const TranslationTable table = delivered();
    EXPECT_EQ(I18n::codes(table).join(u' '), u"en ru de");
    for (auto language = table.cbegin(); language != table.cend(); ++language) {
        Texts texts = *language;
        int arguments = 0;
        for (const char *keys : vocabulary) {
            for (const QString &key : QString::fromLatin1(keys).simplified().split(u' ')) {
                const QString text = texts.take(key);
                EXPECT_FALSE(text.isEmpty()) << qPrintable(language.key() + u' ' + key);
                EXPECT_EQ(text.count(u'{'), arguments) << qPrintable(text);
                for (int i = 0; i < arguments; ++i) {
                    EXPECT_EQ(text.count(u"{%1}"_qs.arg(i)), 1) << qPrintable(text);
                }
            }
            ++arguments;
        }
        EXPECT_EQ(texts.keys(), QStringList()) << qPrintable(language.key());
    }
}

/// Dates and reset notes of a language as on Friday, 14 November 2025, at 10:20 in Berlin.
std::string phrases(const char *code)
{
    const Strings strings(QString::fromLatin1(code), delivered());
    const TimePoint now {std::chrono::milliseconds(1'763'112'000'000)};
    QStringList texts;
    for (const char *key : {"monthShort", "monthLong", "dayShort", "dayLong", "dayTime"}) {
        const MonthForm form = key[0] == 'm' ? MonthForm::StandAlone : MonthForm::InPhrase;
        texts.append(strings.date(now, QString::fromLatin1(key), form));
    }
    for (const int minutes : {161, 4800}) {
        const std::chrono::minutes left(minutes);
        texts.append(strings.t(u"resetIn"_qs, {strings.when(now + left, now), strings.span(left)}));
    }
    return texts.join(u" | ").replace(QChar::Nbsp, u' ').toStdString();
}

TEST(Translations, readAsEachLanguageIsWritten)
{
    EXPECT_EQ(phrases("en"),
        "Nov | November 2025 | 14 Nov | Friday, 14 November | 14 Nov 10:20 | "
        "resets at 13:01 · 2h 41m left | resets Mon 18:20 · 3d 8h left");
    EXPECT_EQ(phrases("ru"),
        "нояб | ноябрь 2025 | 14 нояб | пятница, 14 ноября | 14 нояб 10:20 | "
        "сброс в 13:01 · ещё 2 ч 41 мин | сброс пн 18:20 · ещё 3 д 8 ч");
    EXPECT_EQ(phrases("de"),
        "Nov | November 2025 | 14. Nov | Freitag, 14. November | 14. Nov 10:20 | "
        "Reset um 13:01 · noch 2 h 41 min | Reset Mo 18:20 · noch 3 d 8 h");
}

TEST(Translations, sayInEnglishWhatTheProgramSaysWithoutThem)
{
    const Texts defaults {{u"refreshTip"_qs, u"Refresh now"_qs}, {u"providers"_qs, u"Assistant"_qs},
        {u"noSessions"_qs, u"No sessions yet"_qs}, {u"history"_qs, u"History"_qs},
        {u"sessionToday"_qs, u"today {0}"_qs}, {u"sessionYesterday"_qs, u"yesterday {0}"_qs},
        {u"collectFailed"_qs,
            u"Statistics could not be collected. The file widget.log tells more."_qs},
        {u"statsUnreadable"_qs,
            u"The statistics cannot be read. They will be shown again after the next run."_qs}};
    const Texts english = delivered().value(u"en"_qs);
    for (auto entry = defaults.cbegin(); entry != defaults.cend(); ++entry) {
        EXPECT_EQ(english.value(entry.key()), *entry);
    }
}

} // namespace
