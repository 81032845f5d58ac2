// The table of translations, and every kind of text that is made with a language of it.

#include "widget/core/Paths.h"
#include "widget/text/Strings.h"
#include "WidgetTarget.h"

#include <algorithm>
#include <limits>
#include <QFile>
#include <QSet>

namespace {

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
        (void)language.date(moment, u"dayLong"_qs, MonthForm::InPhrase);
        (void)language.date(moment, u"monthLong"_qs, MonthForm::StandAlone);
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
    if (!codes.isEmpty()) {
        // One of them: to make the formatters of a language takes long.
        lookAt(Strings(codes.at(bytes.size() % codes.size()), table));
    }
}
