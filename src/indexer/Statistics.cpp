#include "indexer/Statistics.h"

#include "indexer/Title.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace indexer {

namespace {

using namespace std::chrono;

/// A session while its records are added up.
struct OpenSession {
    Spending spending;
    TimePoint latest {}; // of its records
    TimePoint folderTime = TimePoint::max();
    TextId folder = 0; // of its earliest record that tells one
};

/// Adds up a ledger by days and sessions.
class Summing final {
public:
    Summing(const Scan &scan, const PriceTable &prices)
        : m_scan(scan)
        , m_prices(prices)
    {
        scan.ledger().forEach([this](const UsageRecord &record) { add(record); });
    }

    [[nodiscard]] const std::map<Day, Period> &days() const { return m_days; }
    [[nodiscard]] std::vector<SessionSummary> sessions() const;

private:
    void add(const UsageRecord &record);
    void addToSession(const UsageRecord &record, std::string_view model, std::optional<Money> cost);
    [[nodiscard]] TextId folderOf(TextId id, const OpenSession &session) const;

    const Scan &m_scan;
    const PriceTable &m_prices;
    LocalCalendar m_calendar;
    std::map<Day, Period> m_days;
    std::unordered_map<TextId, OpenSession> m_sessions;
};

void Summing::add(const UsageRecord &record)
{
    const std::string_view model = m_scan.names().text(record.model.text);
    const auto price = m_prices.price({.model = model,
        .time = record.time(),
        .usage = record.usage,
        .speed = record.speed,
        .tier = record.tier,
        .isSum = record.isSum});
    const auto cost = price ? std::optional(price->cost) : std::nullopt;
    const Day day = m_calendar.dayOf(record.time());
    Period &period = m_days[day];
    period.start = day;
    period.spending.add(model, record.usage, cost);
    period.spending.isEstimated =
        period.spending.isEstimated || record.isIncomplete() || (price && price->isEstimated);
    if (record.session.text != 0) {
        period.sessions.insert(record.session.text);
        addToSession(record, model, cost);
    }
}

void Summing::addToSession(
    const UsageRecord &record, std::string_view model, std::optional<Money> cost)
{
    const TimePoint time = record.time();
    const TextId folder = record.folder.text;
    OpenSession &session = m_sessions[record.session.text];
    session.spending.add(model, record.usage, cost);
    session.spending.isEstimated = session.spending.isEstimated || record.isIncomplete();
    session.latest = std::max(session.latest, time);
    const bool isFirst = time < session.folderTime
        || (time == session.folderTime
            && m_scan.names().text(folder) < m_scan.names().text(session.folder));
    if (folder != 0 && isFirst) {
        session.folderTime = time;
        session.folder = folder;
    }
}

TextId Summing::folderOf(TextId id, const OpenSession &session) const
{
    return session.folder != 0 ? session.folder : m_scan.sessions().folder(id);
}

std::vector<SessionSummary> Summing::sessions() const
{
    struct Entry {
        TimePoint end;
        TextId id;
        const OpenSession *session;
    };
    std::vector<Entry> order;
    order.reserve(m_sessions.size());
    for (const auto &[id, session] : m_sessions) {
        order.push_back({m_scan.sessions().end(id).value_or(session.latest), id, &session});
    }
    const TextPool &names = m_scan.names();
    std::sort(order.begin(), order.end(), [&names](const Entry &a, const Entry &b) {
        return a.end != b.end ? a.end > b.end : names.text(a.id) < names.text(b.id);
    });

    const auto titles = m_scan.sessions().titles();
    std::vector<SessionSummary> result;
    result.reserve(order.size());
    for (const Entry &entry : order) {
        const auto title = titles.find(entry.id);
        result.push_back({title == titles.end() ? std::string() : title->second,
            tidyName(folderName(names.text(folderOf(entry.id, *entry.session)))), entry.end,
            entry.session->spending});
    }
    return result;
}

void addTo(Period &sum, const Period &part)
{
    sum.spending += part.spending;
    sum.sessions.insert(part.sessions.begin(), part.sessions.end());
}

/// The days from one up to another, added up.
Period span(const std::map<Day, Period> &days, Day begin, Day end)
{
    Period sum {begin, {}, {}};
    for (auto it = days.lower_bound(begin); it != days.end() && it->first < end; ++it) {
        addTo(sum, it->second);
    }
    return sum;
}

/// All periods from the first usage to `last`; `startOf` gives the period that a day lies in, and
/// no period is longer than `longest`.
std::vector<Period> periods(
    const std::map<Day, Period> &days, Day last, Day (*startOf)(Day), std::chrono::days longest)
{
    std::vector<Period> result;
    if (days.empty()) {
        return result;
    }
    for (Day start = startOf(days.begin()->first); start <= last;) {
        const Day next = startOf(start + longest);
        result.push_back(span(days, start, next));
        start = next;
    }
    return result;
}

Day sameDay(Day day)
{
    return day;
}

} // namespace

Statistics computeStatistics(const Scan &scan, const PriceTable &prices, TimePoint now)
{
    const Summing summing(scan, prices);
    const auto &byDay = summing.days();
    constexpr days day {1};
    constexpr days week {7};
    constexpr days longestMonth {31};

    LocalCalendar calendar;
    const Day today = calendar.dayOf(now);
    const Day last = byDay.empty() ? today : std::max(today, byDay.rbegin()->first);
    const Day monday = weekOf(today);
    const Day first = monthOf(today);
    return {
        .days = periods(byDay, last, sameDay, day),
        .weeks = periods(byDay, last, weekOf, week),
        .months = periods(byDay, last, monthOf, longestMonth),
        .sessions = summing.sessions(),
        .today = span(byDay, today, today + day),
        .yesterday = span(byDay, today - day, today),
        .week = span(byDay, monday, monday + week),
        .lastWeek = span(byDay, monday - week, monday),
        .month = span(byDay, first, monthOf(first + longestMonth)),
        .lastMonth = span(byDay, monthOf(first - day), first),
    };
}

} // namespace indexer
