#include "widget/core/Dates.h"
#include "widget/text/Strings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

/// Languages whose month and weekday names are written in lower case inside a phrase.
constexpr std::array<QStringView, 6> lowercased {u"ru", u"uk", u"pl", u"es", u"pt", u"fr"};
/// Languages that group thousands with "." and write decimals with ",".
constexpr std::array<QStringView, 2> dotGrouped {u"ru", u"uk"};

bool isAmong(const auto &languages, const QString &code)
{
    return std::ranges::find(languages, QStringView(code)) != languages.end();
}

/// Rounds ties of the exact value to even, like printf, but knows no locale. QString would round
/// them up.
QString fixed(double value, int decimals)
{
    std::array<char, 330> digits {}; // the largest double has 309 before the point
    const auto [end, error] = std::to_chars(
        digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals);
    return error == std::errc() ? QString::fromLatin1(digits.data(), end - digits.data())
                                : QString();
}

QString toOneDecimal(double value)
{
    return fixed(std::round(value * 10) / 10, 1);
}

QString toWhole(double value)
{
    return fixed(std::round(value) + 0.0, 0); // a rounded -0.4 is no "-0"
}

QString grouped(QString digits, QChar separator)
{
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3) {
        digits.insert(at, separator);
    }
    return digits;
}

/// The pattern in the formatter's notation: translations write weekdays as "ddd" and "dddd".
QString formatterPattern(QString pattern, MonthForm month)
{
    pattern.replace(QStringLiteral("dddd"), QStringLiteral("EEEE"));
    pattern.replace(QStringLiteral("ddd"), QStringLiteral("EEE"));
    if (month == MonthForm::StandAlone) {
        pattern.replace(QStringLiteral("MMMM"), QStringLiteral("LLLL"));
        pattern.replace(QStringLiteral("MMM"), QStringLiteral("LLL"));
    }
    return pattern;
}

/// Whether the character before `at` is a letter, of any plane.
bool followsLetter(const QString &text, qsizetype at)
{
    if (at < 1) {
        return false;
    }
    const QChar before = text.at(at - 1);
    if (at > 1 && before.isLowSurrogate() && text.at(at - 2).isHighSurrogate()) {
        return QChar::isLetter(QChar::surrogateToUcs4(text.at(at - 2), before));
    }
    return before.isLetter();
}

/// Abbreviated names without their dots: "janv." becomes "janv", "14." stays.
QString withoutAbbreviationDots(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) != u'.' || !followsLetter(text, i)) {
            kept.append(text.at(i));
        }
    }
    return kept;
}

} // namespace

QString Strings::tokens(double count)
{
    if (!std::isfinite(count)) {
        count = 0;
    }
    // The thresholds see the unrounded count: 999,600 is 1000k and not 1.0M.
    if (count >= 1e9) {
        return toOneDecimal(count / 1e9) + u'B';
    }
    if (count >= 1e6) {
        return toOneDecimal(count / 1e6) + u'M';
    }
    return count >= 1000 ? toWhole(count / 1000) + u'k' : toWhole(count);
}

QString Strings::money(double amount) const
{
    if (!std::isfinite(amount)) {
        amount = 0;
    }
    const QString number = amount >= 100 ? fixed(std::round(amount), 0) : fixed(amount, 2);
    const qsizetype point = number.indexOf(u'.');
    const QString fraction = point < 0 ? QString() : number.mid(point + 1);
    QString digits = number.left(point);
    const bool negative = digits.startsWith(u'-');
    if (negative) {
        digits.remove(0, 1);
    }

    const bool dots = isAmong(dotGrouped, m_code);
    // The sign stands after the dollar sign deliberately.
    QString text =
        u'$' + (negative ? QStringLiteral("-") : QString()) + grouped(digits, dots ? u'.' : u',');
    if (!fraction.isEmpty()) {
        text += (dots ? u',' : u'.') + fraction;
    }
    return text;
}

QString Strings::span(Seconds length) const
{
    if (!std::isfinite(length.count())) {
        return t(QStringLiteral("spanM"), {QStringLiteral("0")});
    }
    // The upper bound, some two billion years, only keeps the conversion defined.
    const auto m = static_cast<qint64>(std::clamp(std::ceil(length.count() / 60), 0.0, 1e15));
    const auto decimal = [](qint64 value) { return QString::number(value); };
    if (m >= 1440) {
        return t(QStringLiteral("spanDH"), {decimal(m / 1440), decimal(m % 1440 / 60)});
    }
    if (m < 60) {
        return t(QStringLiteral("spanM"), {decimal(m)});
    }
    return t(QStringLiteral("spanHM"), {decimal(m / 60), decimal(m % 60)});
}

QString Strings::when(TimePoint moment, TimePoint now) const
{
    if (Dates::daysAgo(moment, now) == 0) {
        return t(QStringLiteral("atTime"), {time(moment)});
    }
    return date(moment, QStringLiteral("weekdayTime"), MonthForm::InPhrase);
}

QString Strings::time(TimePoint moment) const
{
    return m_clock(moment);
}

QString Strings::date(TimePoint moment, const QString &key, MonthForm month) const
{
    const QString pattern = formatterPattern(text(key, {}), month);
    auto formatter = m_formatters.find(pattern);
    if (formatter == m_formatters.end()) {
        formatter = m_formatters.emplace(pattern, DateFormatter(m_culture, pattern)).first;
    }
    const QString written = withoutAbbreviationDots(formatter->second(moment));
    return isAmong(lowercased, m_code) ? QLocale(m_culture).toLower(written) : written;
}
