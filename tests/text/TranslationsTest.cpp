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
       syncCopied syncDeleteTitle syncDeleteMessage syncDeleteConfirm syncCancel syncIsOff syncSelf syncBadId
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
        for (std::size_t arguments = 0; arguments < std::size(vocabulary); ++arguments) {
            const QString keys = QString::fromLatin1(vocabulary[arguments]).simplified();
            for (const QString &key : keys.split(u' ')) {
                const QString text = texts.take(key);
                EXPECT_FALSE(text.isEmpty()) << qPrintable(language.key() + u' ' + key);
                EXPECT_EQ(text.count(u'{'), arguments) << qPrintable(text);
                for (std::size_t i = 0; i < arguments; ++i) {
                    EXPECT_EQ(text.count(u"{%1}"_qs.arg(i)), 1) << qPrintable(text);
                }
            }
        }
        EXPECT_EQ(texts.keys(), QStringList()) << qPrintable(language.key());
    }
}

TEST(Translations, readAsEachLanguageIsWritten)
{
    const std::pair<QString, const char *> rows[] = {
        {u"en"_qs, "Nov|November 2025|14 Nov|Friday, 14 November|resets Mon 18:20 · 3d 8h left"},
        {u"ru"_qs, "нояб|ноябрь 2025|14 нояб|пятница, 14 ноября|сброс пн 18:20 · ещё 3 д 8 ч"},
        {u"de"_qs,
            "Nov|November 2025|14. Nov|Freitag, 14. November|Reset Mo 18:20 · noch 3 d 8 h"}};
    const TimePoint now {std::chrono::milliseconds(1'763'112'000'000)}; // 14 November 2025, 10:20
    const std::chrono::hours left(80);
    for (const auto &[code, phrases] : rows) {
        const Strings strings(code, delivered());
        QStringList texts;
        for (const char *key : {"monthShort", "monthLong", "dayShort", "dayLong"}) {
            const MonthForm form = key[0] == 'm' ? MonthForm::StandAlone : MonthForm::InPhrase;
            texts << strings.date(now, QLatin1String(key), form);
        }
        texts << strings.t(u"resetIn"_qs, {strings.when(now + left, now), strings.span(left)});
        EXPECT_EQ(texts.join(u'|').replace(QChar::Nbsp, u' ').toStdString(), phrases);
    }
}

} // namespace
