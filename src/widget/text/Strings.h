#pragma once

#include "formats/TimePoint.h"
#include "widget/text/DateFormatter.h"
#include "widget/text/I18n.h"
#include <QStringList>
#include <unordered_map>

/// Whether a month name is part of a phrase or stands alone: some languages inflect it.
enum class MonthForm { InPhrase, StandAlone };

/// One language's texts, with English behind them, and how it writes numbers and dates.
///
/// Made anew for each change of language and shared as `std::shared_ptr<const Strings>`. It never
/// changes apart from the cache of its date formatters, which no lock guards: main thread only.
class Strings final {
public:
    /// The language `code` of the table `all`; a language that the table lacks has English texts.
    Strings(const QString &code, const TranslationTable &all);

    [[nodiscard]] const QString &code() const { return m_code; }
    /// Whose month and weekday names are used, such as "en-US".
    [[nodiscard]] const QString &culture() const { return m_culture; }

    /// The key's text, the key itself where there is none. The first argument fills every "{0}",
    /// then the second every "{1}", and so on, also in what earlier arguments have brought.
    [[nodiscard]] QString t(const QString &key, const QStringList &arguments = {}) const;
    /// The key's text as it stands, `defaultText` where there is none.
    [[nodiscard]] QString text(const QString &key, const QString &defaultText) const;

    /// A token count in any language, such as 1.5M. What is no finite number counts as none.
    [[nodiscard]] static QString tokens(double count);
    /// US dollars, such as $1,234 or $-5.00; cents only below a hundred.
    [[nodiscard]] QString money(double amount) const;
    /// A length of time to the begun minute, such as 2h 41m; never negative.
    [[nodiscard]] QString span(Seconds length) const;
    /// The clock time of a moment of today, weekday and clock time of any other.
    [[nodiscard]] QString when(TimePoint moment, TimePoint now) const;
    /// The clock time with 24 hours, such as 09:05, in every language.
    [[nodiscard]] QString time(TimePoint moment) const;
    /// The date by the language's own pattern, which stands under `key`; empty without one.
    [[nodiscard]] QString date(TimePoint moment, const QString &key, MonthForm month) const;

private:
    QString m_code;
    Texts m_table;
    Texts m_fallback;
    QString m_culture;
    DateFormatter m_clock;
    mutable std::unordered_map<QString, DateFormatter> m_formatters; ///< by their pattern
};
