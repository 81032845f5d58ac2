#include "widget/text/Strings.h"

#include "TestFiles.h"
#include "widget/core/Paths.h"
#include <QDirIterator>
#include <QRegularExpression>

namespace {

/// The texts that are delivered beside the program, read as the program reads them.
TranslationTable delivered()
{
    QFile file(QStringLiteral(SHIPPED_TRANSLATIONS));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    writeFile(Paths::i18n(), file.readAll());
    return I18n::load();
}

/// All that the widget's sources say.
QString sources()
{
    QString all;
    QDirIterator files(QStringLiteral(SOURCES), {u"*.cpp"_qs, u"*.h"_qs, u"*.qml"_qs}, QDir::Files,
        QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.fileName().contains(u"/indexer/") && file.open(QIODevice::ReadOnly)) {
            all += QString::fromUtf8(file.readAll());
        }
    }
    return all;
}

/// What the pattern's group finds, each once.
QSet<QString> found(const QString &pattern, const QString &text)
{
    QSet<QString> all;
    auto matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext()) {
        all << matches.next().captured(1);
    }
    return all;
}

TEST(Translations, haveEachTextThatIsLookedUpAndNoOtherInEveryLanguage)
{
    const TranslationTable table = delivered();
    EXPECT_EQ(I18n::codes(table).join(u' '), u"en ru de");
    const Texts english = table.value(u"en"_qs);
    const QString code = sources();
    const QSet<QString> lookedUp = found(uR"re(\b(?:t|label|date)\([^"()]*\(?u?"(\w+)")re"_qs, code)
        + found(uR"re("((?:menu|settings|sync|tab)[A-Z]\w*)")re"_qs, code);
    EXPECT_GT(lookedUp.size(), 90);
    for (const QString &key : lookedUp) {
        EXPECT_TRUE(english.contains(key)) << qPrintable(key);
    }
    const QSet<QString> spelled = found(uR"re("(\w+)")re"_qs, code);
    const QString placeholder = u"(\\{\\d\\})"_qs;
    for (const Texts &texts : table) {
        EXPECT_EQ(texts.size(), english.size());
        for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
            EXPECT_TRUE(spelled.contains(text.key())) << qPrintable(text.key());
            EXPECT_FALSE(text->isEmpty()) << qPrintable(text.key());
            EXPECT_EQ(found(placeholder, *text), found(placeholder, english.value(text.key())))
                << qPrintable(*text);
        }
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
