#include "pictures/Canned.h"

#include <array>
#include <cmath>
#include <QDate>

using namespace std::chrono_literals;

namespace {

/// Ordinary ones, and such as no layout likes: right to left, overlong, of emoji, of markup, empty.
constexpr std::array titles {"Fix flaky release pipeline", "Port the parser to the new grammar",
    "Explain the cache layer", "إصلاح خط أنابيب الإصدار غير المستقر", "תיקון ה-parser (גרסה 2.0)",
    "A title that goes on and on, as if whoever wrote it had been paid by the word and nothing "
    "else",
    "👩‍👩‍👧‍👦 🏳️‍🌈 ship it 🚀🚀🚀",
    "<b>Not bold</b> & not\na second line", "",
    "Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft"};
constexpr std::array projects {"kestrelbay", "billing-api", "<i>docs</i>", "مشروع", "",
    "a-project-whose-name-is-no-shorter-than-the-title-of-the-session-in-it", "🐦"};
constexpr std::array devices {"", "laptop", "מחשב נייד", "the-old-workstation-under-the-stairs"};

/// A figure from 2 to 22 that differs from one period to the next.
double wave(int ago)
{
    return 2 + (ago * 37 + 52) % 101 / 5.0;
}

TokenSet tokens(double cost)
{
    return {.input = cost * 33e3, .output = cost * 67e3, .cacheWrite = cost * 233e3};
}

/// The six spans of a provider that took this share of everything.
StatsTotals spans(double share)
{
    const auto span = [share](double cost) {
        return Totals {cost * share, tokens(cost * share), std::ceil(cost / 2)};
    };
    return {span(12.48), span(9.31), span(61.90), span(74.02), span(214), span(388)};
}

/// So many periods up to today's, each of about so many days. Weekends are quiet, and what is older
/// than ten periods is estimated.
QList<PeriodRow> history(int count, int daysEach)
{
    const QDate today(2025, 11, 21);
    QList<PeriodRow> rows;
    for (int ago = count - 1; ago >= 0; --ago) {
        const QDate day = today.addDays(-ago);
        const bool isQuiet = daysEach == 1 && day.dayOfWeek() > 5;
        const double cost = isQuiet ? 0 : daysEach * wave(ago);
        rows << PeriodRow {.date = day.toString(Qt::ISODate),
            .start = today.addDays(-7 * qint64(ago) - 4).toString(Qt::ISODate),
            .month = today.addMonths(-ago).toString(u"yyyy-MM"),
            .cost = cost,
            .tokens = tokens(cost),
            .estimated = ago > 10,
            .models = QList<ModelCost> {{u"claude-opus-4-5"_qs, cost * 0.715},
                {u"claude-sonnet-4-5"_qs, cost * 0.264}, {u"claude-haiku-4-5"_qs, cost * 0.021}}};
    }
    return rows;
}

} // namespace

TimePoint Canned::now()
{
    return std::chrono::sys_days(2025y / 11 / 21) + 14h + 59min;
}

ParsedStats Canned::statistics(const Extent &extent)
{
    ParsedStats parsed;
    parsed.stats.totals = spans(1);
    parsed.stats.providers =
        QMap<QString, ProviderStats> {{u"claude"_qs, {spans(1)}}, {u"codex"_qs, {spans(0.3)}}};
    parsed.stats.days = history(extent.days, 1);
    parsed.stats.weeks = history(extent.days / 7 + 1, 7);
    parsed.stats.months = history(extent.days / 30 + 1, 30);
    for (int i = 0; i < extent.sessions; ++i) {
        const auto text = [i](const auto &texts) {
            return QString::fromUtf8(texts[i % texts.size()]);
        };
        SessionItem item {parsed.sessions.size(), text(titles), text(projects),
            now() - 47min - i * 13h, wave(i), wave(i) * 333e3, u"claude"_qs, text(devices)};
        parsed.sessions << item;
        if (i % 5 == 0) {
            item.id = parsed.sessions.size();
            item.provider = u"codex"_qs;
            parsed.sessions << item;
        }
    }
    return parsed;
}

Limits Canned::limits(double fiveHours, double sevenDays)
{
    const TimePoint taken = now() - 2min;
    return {taken, Reading {fiveHours, now() + 2h + 41min}, Reading {sevenDays, now() + 89h + 1min},
        taken};
}

CodexLimits Canned::codexLimits()
{
    CodexLimits codex;
    codex.limits = {now() - 26min, Reading {42, now() + 9h + 5min}, Reading {77, now() + 400h}, {}};
    codex.primaryLength = 24h;
    codex.secondaryLength = 30 * 24h;
    return codex;
}
