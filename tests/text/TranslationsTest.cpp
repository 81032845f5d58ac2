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

/// One day of each month as all patterns write it, in the order of `codes`.
TEST(Translations, writeDatesAsEachLanguageDoes)
{
    using namespace std::chrono;
    const QStringList codes {u"en"_qs, u"ru"_qs, u"de"_qs};
    const struct {
        unsigned day;
        std::array<const char *, 3> texts;
    } rows[] = {
        {11,
            {"Jan|January 2026|11 Jan|Sunday, 11 January|Sun 09:07|11 Jan 09:07",
                "янв|январь 2026|11 янв|воскресенье, 11 января|вс 09:07|11 янв 09:07",
                "Jan|Januar 2026|11. Jan|Sonntag, 11. Januar|So 09:07|11. Jan 09:07"}},
        {17,
            {"Feb|February 2026|17 Feb|Tuesday, 17 February|Tue 09:07|17 Feb 09:07",
                "февр|февраль 2026|17 февр|вторник, 17 февраля|вт 09:07|17 февр 09:07",
                "Feb|Februar 2026|17. Feb|Dienstag, 17. Februar|Di 09:07|17. Feb 09:07"}},
        {23,
            {"Mar|March 2026|23 Mar|Monday, 23 March|Mon 09:07|23 Mar 09:07",
                "март|март 2026|23 мар|понедельник, 23 марта|пн 09:07|23 мар 09:07",
                "Mär|März 2026|23. März|Montag, 23. März|Mo 09:07|23. März 09:07"}},
        {1,
            {"Apr|April 2026|1 Apr|Wednesday, 1 April|Wed 10:07|1 Apr 10:07",
                "апр|апрель 2026|1 апр|среда, 1 апреля|ср 10:07|1 апр 10:07",
                "Apr|April 2026|1. Apr|Mittwoch, 1. April|Mi 10:07|1. Apr 10:07"}},
        {7,
            {"May|May 2026|7 May|Thursday, 7 May|Thu 10:07|7 May 10:07",
                "май|май 2026|7 мая|четверг, 7 мая|чт 10:07|7 мая 10:07",
                "Mai|Mai 2026|7. Mai|Donnerstag, 7. Mai|Do 10:07|7. Mai 10:07"}},
        {13,
            {"Jun|June 2026|13 Jun|Saturday, 13 June|Sat 10:07|13 Jun 10:07",
                "июнь|июнь 2026|13 июн|суббота, 13 июня|сб 10:07|13 июн 10:07",
                "Jun|Juni 2026|13. Juni|Samstag, 13. Juni|Sa 10:07|13. Juni 10:07"}},
        {19,
            {"Jul|July 2026|19 Jul|Sunday, 19 July|Sun 10:07|19 Jul 10:07",
                "июль|июль 2026|19 июл|воскресенье, 19 июля|вс 10:07|19 июл 10:07",
                "Jul|Juli 2026|19. Juli|Sonntag, 19. Juli|So 10:07|19. Juli 10:07"}},
        {25,
            {"Aug|August 2026|25 Aug|Tuesday, 25 August|Tue 10:07|25 Aug 10:07",
                "авг|август 2026|25 авг|вторник, 25 августа|вт 10:07|25 авг 10:07",
                "Aug|August 2026|25. Aug|Dienstag, 25. August|Di 10:07|25. Aug 10:07"}},
        {3,
            {"Sep|September 2026|3 Sep|Thursday, 3 September|Thu 10:07|3 Sep 10:07",
                "сент|сентябрь 2026|3 сент|четверг, 3 сентября|чт 10:07|3 сент 10:07",
                "Sep|September 2026|3. Sept|Donnerstag, 3. September|Do 10:07|3. Sept 10:07"}},
        {9,
            {"Oct|October 2026|9 Oct|Friday, 9 October|Fri 10:07|9 Oct 10:07",
                "окт|октябрь 2026|9 окт|пятница, 9 октября|пт 10:07|9 окт 10:07",
                "Okt|Oktober 2026|9. Okt|Freitag, 9. Oktober|Fr 10:07|9. Okt 10:07"}},
        {15,
            {"Nov|November 2026|15 Nov|Sunday, 15 November|Sun 09:07|15 Nov 09:07",
                "нояб|ноябрь 2026|15 нояб|воскресенье, 15 ноября|вс 09:07|15 нояб 09:07",
                "Nov|November 2026|15. Nov|Sonntag, 15. November|So 09:07|15. Nov 09:07"}},
        {21,
            {"Dec|December 2026|21 Dec|Monday, 21 December|Mon 09:07|21 Dec 09:07",
                "дек|декабрь 2026|21 дек|понедельник, 21 декабря|пн 09:07|21 дек 09:07",
                "Dez|Dezember 2026|21. Dez|Montag, 21. Dezember|Mo 09:07|21. Dez 09:07"}},
    };
    unsigned month = 0;
    for (const auto &[day, expected] : rows) {
        const TimePoint moment = sys_days(2026y / ++month / day) + 8h + 7min;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const Strings strings(codes.at(static_cast<qsizetype>(i)), delivered());
            QStringList texts;
            for (const char *key :
                {"monthShort", "monthLong", "dayShort", "dayLong", "weekdayTime", "dayTime"}) {
                const MonthForm form = key[0] == 'm' ? MonthForm::StandAlone : MonthForm::InPhrase;
                texts << strings.date(moment, QLatin1String(key), form);
            }
            EXPECT_EQ(texts.join(u'|').toStdString(), expected.at(i));
        }
    }
}

TEST(Translations, sayWhenALimitResets)
{
    const std::pair<QString, const char *> rows[] = {{u"en"_qs, "resets Mon 18:20 · 3d 8h left"},
        {u"ru"_qs, "сброс пн 18:20 · ещё 3 д 8 ч"}, {u"de"_qs, "Reset Mo 18:20 · noch 3 d 8 h"}};
    const TimePoint now {std::chrono::milliseconds(1'763'112'000'000)}; // 14 November 2025, 10:20
    const std::chrono::hours left(80);
    for (const auto &[code, phrase] : rows) {
        const Strings strings(code, delivered());
        QString text =
            strings.t(u"resetIn"_qs, {strings.when(now + left, now), strings.span(left)});
        EXPECT_EQ(text.replace(QChar::Nbsp, u' ').toStdString(), phrase);
    }
}

} // namespace
