#include "pictures/Canned.h"

#include <array>
#include <QDate>

using namespace std::chrono_literals;

namespace {

const QDate today(2025, 11, 21);

/// What the newest days cost, the last one today.
constexpr std::array<double, 14> newestDays {
    6.20, 11.10, 4.20, 0.18, 0.12, 18.10, 31.20, 23.40, 14.20, 9.00, 0.22, 2.86, 9.31, 12.48};

constexpr double tokensPerDollar = 333'000;

struct Titled {
    const char *title;
    const char *project;
    std::chrono::minutes ago;
    double cost;
    double tokens;
    const char *device = "";
};

constexpr std::array<Titled, 9> recent {{
    {"Fix flaky release pipeline", "kestrelbay", 47min, 4.10, 1.4e6},
    {"Port the parser to the new grammar", "lumen", 4h + 19min, 2.75, 0.9e6},
    {"Review migration scripts", "billing-api", 20h + 57min, 6.02, 2.2e6, "laptop"},
    {"Explain the cache layer", "lumen", 53h + 39min, 0.42, 96e3},
    {"Write the onboarding guide", "docs", 71h + 14min, 1.18, 310e3},
    {"Untangle the build graph", "kestrelbay", 102h + 46min, 3.66, 1.1e6},
    {"Investigate memory growth", "billing-api", 114h + 9min, 5.20, 1.9e6},
    {"Sketch the settings window", "kestrelbay", 143h + 30min, 0.98, 270e3},
    {"Rename the billing tables", "billing-api", 170h, 12.75, 4.4e6, "workstation"},
}};

constexpr std::array<Titled, 7> awkward {{
    {"إصلاح خط أنابيب الإصدار غير المستقر", "مشروع", 47min, 4.10, 1.4e6},
    {"תיקון ה-parser (גרסה 2.0)", "לומן", 4h, 2.75, 0.9e6, "מחשב נייד"},
    {"A title that goes on and on, as if whoever wrote it had been paid by the word and by nothing "
     "else but the word",
        "a-project-whose-name-is-no-shorter-than-the-title-of-the-session-in-it", 21h, 12'345.67,
        9.8e12, "the-old-workstation-under-the-stairs"},
    {"👩‍👩‍👧‍👦 🏳️‍🌈 ship it 🚀🚀🚀", "🐦", 54h, 0.42, 96e3},
    {"Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft", "", 71h,
        1.18, 310e3},
    {"<b>Not bold</b> & not\na second line", "<i>docs</i>", 103h, 0, 0},
    {"", "", 130h, 0.004, 12},
}};

TokenSet tokens(double spent)
{
    return {.input = spent * 0.1, .output = spent * 0.2, .cacheWrite = spent * 0.7};
}

Totals totals(double cost, double spent, double sessions = 0)
{
    return {cost, tokens(spent), sessions};
}

/// The figures of a provider that took this share of everything.
StatsTotals spans(double share)
{
    return {
        .today = totals(12.48 * share, 4.2e6 * share, 9),
        .yesterday = totals(9.31 * share, 3.1e6 * share, 6),
        .week = totals(61.90 * share, 21.7e6 * share, 31),
        .lastWeek = totals(74.02 * share, 26e6 * share, 38),
        .month = totals(214 * share, 78.3e6 * share, 104),
        .lastMonth = totals(388 * share, 141.9e6 * share, 173),
    };
}

PeriodRow period(double cost)
{
    PeriodRow row;
    row.cost = cost;
    row.tokens = tokens(cost * tokensPerDollar);
    row.estimated = false;
    row.models = QMap<QString, double> {
        {QStringLiteral("claude-opus-4-5"), cost * 0.715},
        {QStringLiteral("claude-sonnet-4-5"), cost * 0.264},
        {QStringLiteral("claude-haiku-4-5"), cost * 0.021},
    };
    return row;
}

/// What the day this long before today cost: fixed near by, farther off a wave with quiet weekends.
double costOf(qint64 daysAgo)
{
    if (daysAgo < qint64(newestDays.size())) {
        return newestDays.at(newestDays.size() - 1 - daysAgo);
    }
    const double wave = 2 + static_cast<double>(daysAgo * 37 % 101) / 5;
    return today.addDays(-daysAgo).dayOfWeek() > 5 ? 0 : wave;
}

void addTo(QList<PeriodRow> &rows, bool begins, const PeriodRow &day)
{
    if (begins) {
        rows.append(day);
        return;
    }
    const double sum = *rows.last().cost + *day.cost;
    PeriodRow grown = period(sum);
    grown.start = rows.last().start;
    grown.month = rows.last().month;
    // What is older than a year is known by its tokens only.
    grown.estimated = rows.last().estimated;
    rows.last() = grown;
}

void addHistory(Stats &stats, int count)
{
    QList<PeriodRow> days;
    QList<PeriodRow> weeks;
    QList<PeriodRow> months;
    for (qint64 ago = count - 1; ago >= 0; --ago) {
        const QDate date = today.addDays(-ago);
        PeriodRow day = period(costOf(ago));
        day.estimated = ago > 365;
        const QString iso = date.toString(Qt::ISODate);
        PeriodRow first = day;
        first.start = iso;
        addTo(weeks, weeks.isEmpty() || date.dayOfWeek() == 1, first);
        first.month = iso.left(7);
        addTo(months, months.isEmpty() || date.day() == 1, first);
        day.date = iso;
        days.append(day);
    }
    stats.days = days;
    stats.weeks = weeks;
    stats.months = months;
}

void addSession(QList<SessionItem> &sessions, const Titled &made, const QString &provider, int age)
{
    SessionItem item;
    item.id = sessions.size();
    item.title = QString::fromUtf8(made.title);
    item.project = QString::fromUtf8(made.project);
    item.end = Canned::now() - made.ago - age * 24h;
    item.cost = made.cost;
    item.spent = made.tokens;
    item.provider = provider;
    item.device = QString::fromUtf8(made.device);
    sessions.append(item);
}

ParsedStats withoutSessions(int days)
{
    ParsedStats parsed;
    parsed.stats.totals = spans(1);
    parsed.stats.providers = QMap<QString, ProviderStats> {
        {QStringLiteral("claude"), {spans(1)}}, {QStringLiteral("codex"), {spans(0.3)}}};
    addHistory(parsed.stats, days);
    return parsed;
}

} // namespace

TimePoint Canned::now()
{
    return std::chrono::sys_days(2025y / 11 / 21) + 14h + 59min;
}

ParsedStats Canned::statistics(const Extent &extent)
{
    ParsedStats parsed = withoutSessions(extent.days);
    for (int i = 0; i < extent.sessions; ++i) {
        const int round = i / static_cast<int>(recent.size());
        const Titled &made = recent.at(i % recent.size());
        addSession(parsed.sessions, made, QStringLiteral("claude"), 8 * round);
        if (i % 5 == 0) {
            addSession(parsed.sessions, made, QStringLiteral("codex"), 8 * round + 1);
        }
    }
    return parsed;
}

ParsedStats Canned::awkwardSessions()
{
    ParsedStats parsed = withoutSessions(30);
    for (const Titled &made : awkward) {
        addSession(parsed.sessions, made, QStringLiteral("claude"), 0);
    }
    return parsed;
}

Limits Canned::limits()
{
    return limits(68.5, 31);
}

Limits Canned::limits(double fiveHours, double sevenDays)
{
    const TimePoint taken = now() - 2min;
    return {taken, Reading {fiveHours, now() + 2h + 41min}, Reading {sevenDays, now() + 89h + 1min},
        taken};
}

Limits Canned::endedLimits()
{
    const TimePoint taken = now() - 192h;
    return {taken, Reading {68, now() - 187h}, Reading {31, now() - 24h}, taken};
}

CodexLimits Canned::codexLimits()
{
    const TimePoint taken = now() - 26min;
    CodexLimits codex;
    codex.limits = {taken, Reading {42, now() + 9h + 5min}, Reading {77, now() + 400h}, {}};
    codex.primaryLength = 24h;
    codex.secondaryLength = 30 * 24h;
    codex.plan = QStringLiteral("plus");
    return codex;
}
