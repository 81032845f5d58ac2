// The table of translations, and every kind of text that is made with a language of it.

#include "core/Paths.h"
#include "text/Strings.h"
#include "WidgetTarget.h"

#include <algorithm>
#include <limits>
#include <QFile>
#include <QSet>

namespace {

/// Making the formatters of a language takes long, and one language is much like another.
constexpr qsizetype mostLanguages = 3;

void lookAt(const Strings &language)
{
    constexpr auto largest = std::numeric_limits<double>::max();
    for (const double value : {0.0, -0.004, 99.995, 1234.5, 999'600.0, -1e9, largest, -largest,
             largest * 2, std::nan("")}) {
        require(!language.money(value).isEmpty() && !Strings::tokens(value).isEmpty());
        (void)language.span(Seconds(value));
    }
    const TimePoint farthest {std::chrono::milliseconds(6'000'000'000'000'000'000)};
    for (const TimePoint moment : {now, now - std::chrono::days(3), TimePoint(), farthest,
             TimePoint(-farthest.time_since_epoch())}) {
        (void)language.when(moment, now);
        require(!language.time(moment).isEmpty());
        for (const char *key : {"dayShort", "dayLong", "monthShort", "monthLong", "dayTime"}) {
            (void)language.date(moment, QLatin1String(key), MonthForm::InPhrase);
            (void)language.date(moment, QLatin1String(key), MonthForm::StandAlone);
        }
    }
    const QString key = QStringLiteral("periodNote");
    const QString plain = language.t(key);
    require(language.text(key, key) == plain);
    require(!language.t(key, {u"a"_qs, u"b"_qs}).contains(u"{0}"));
}

} // namespace

void tryInput(const QByteArray &bytes)
{
    QFile file(Paths::i18n());
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    require(file.write(bytes) == bytes.size());
    file.close();

    const TranslationTable table = I18n::load();
    const QStringList codes = I18n::codes(table);
    require(QSet<QString>(codes.cbegin(), codes.cend()).size() == codes.size());
    require(codes.size() == table.size());
    require(std::ranges::all_of(codes, [&](const QString &code) { return table.contains(code); }));
    for (const QString &code : codes.first(std::min(codes.size(), mostLanguages))) {
        lookAt(Strings(code, table));
    }
}
