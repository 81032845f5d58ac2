#include "indexer/Statistics.h"

#include "indexer/Title.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace indexer {

namespace {

using namespace std::chrono;

using Days = std::map<Day, Period>;

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
        scan.rollouts().forEach([this](const UsageRecord &record) { add(record); });
    }

    [[nodiscard]] const Days &days() const { return m_days; }
    [[nodiscard]] const Days &days(Provider provider) const
    {
        return m_byProvider.at(static_cast<std::size_t>(provider));
    }
    [[nodiscard]] std::vector<SessionSummary> sessions() const;

private:
    void add(const UsageRecord &record);
    void addToSession(const UsageRecord &record, const Spending &spending);
    [[nodiscard]] TextId folderOf(SessionKey key, const OpenSession &session) const;
    [[nodiscard]] TimePoint endOf(SessionKey key, const OpenSession &session) const;

    const Scan &m_scan;
    const PriceTable &m_prices;
    LocalCalendar m_calendar;
    Days m_days;
    std::array<Days, providerNames.size()> m_byProvider;
    std::map<SessionKey, OpenSession> m_sessions;
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
    Spending spending;
    spending.add(model, record.usage, price ? std::optional(price->cost) : std::nullopt);
    spending.isEstimated =
        spending.isEstimated || record.isIncomplete() || (price && price->isEstimated);

    const Day day = m_calendar.dayOf(record.time());
    Days &own = m_byProvider.at(static_cast<std::size_t>(record.provider));
    for (Days *days : {&m_days, &own}) {
        Period &period = (*days)[day];
        period.start = day;
        period.spending += spending;
        if (record.session.text != 0) {
            period.sessions.emplace(record.provider, record.session.text);
        }
    }
    if (record.session.text != 0) {
        addToSession(record, spending);
    }
}

void Summing::addToSession(const UsageRecord &record, const Spending &spending)
{
    const TimePoint time = record.time();
    const TextId folder = record.folder.text;
    OpenSession &session = m_sessions[{record.provider, record.session.text}];
    session.spending += spending;
    session.latest = std::max(session.latest, time);
    const bool isFirst = time < session.folderTime
        || (time == session.folderTime
            && m_scan.names().text(folder) < m_scan.names().text(session.folder));
    if (folder != 0 && isFirst) {
        session.folderTime = time;
        session.folder = folder;
    }
}

TextId Summing::folderOf(SessionKey key, const OpenSession &session) const
{
    return session.folder == 0 && key.first == Provider::Claude
        ? m_scan.sessions().folder(key.second)
        : session.folder;
}

TimePoint Summing::endOf(SessionKey key, const OpenSession &session) const
{
    return key.first == Provider::Claude
        ? m_scan.sessions().end(key.second).value_or(session.latest)
        : std::max(m_scan.rollouts().threads().end(key.second), session.latest);
}

std::vector<SessionSummary> Summing::sessions() const
{
    struct Entry {
        TimePoint end;
        SessionKey key;
        const OpenSession *session;
    };
    std::vector<Entry> order;
    order.reserve(m_sessions.size());
    for (const auto &[key, session] : m_sessions) {
        order.push_back({endOf(key, session), key, &session});
    }
    const TextPool &names = m_scan.names();
    std::sort(order.begin(), order.end(), [&names](const Entry &a, const Entry &b) {
        const auto name = [&names](const Entry &entry) {
            return std::make_pair(names.text(entry.key.second), entry.key.first);
        };
        return a.end != b.end ? a.end > b.end : name(a) < name(b);
    });

    const auto titles = m_scan.sessions().titles();
    std::vector<SessionSummary> result;
    result.reserve(order.size());
    for (const auto &[end, key, session] : order) {
        const auto found = titles.find(key.second);
        const std::string &title = key.first == Provider::Codex || found == titles.end()
            ? m_scan.rollouts().threads().title(key.second)
            : found->second;
        result.push_back({key.first, title,
            tidyName(folderName(names.text(folderOf(key, *session)))), end, session->spending});
    }
    return result;
}

void addTo(Period &sum, const Period &part)
{
    sum.spending += part.spending;
    sum.sessions.insert(part.sessions.begin(), part.sessions.end());
}

/// The days from one up to another, added up.
Period span(const Days &days, Day begin, Day end)
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
    const Days &days, Day last, Day (*startOf)(Day), std::chrono::days longest)
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

constexpr days oneDay {1};
constexpr days oneWeek {7};
constexpr days longestMonth {31};

Totals totalsOf(const Days &all, Day today)
{
    const Day monday = weekOf(today);
    const Day first = monthOf(today);
    return {
        .today = span(all, today, today + oneDay),
        .yesterday = span(all, today - oneDay, today),
        .week = span(all, monday, monday + oneWeek),
        .lastWeek = span(all, monday - oneWeek, monday),
        .month = span(all, first, monthOf(first + longestMonth)),
        .lastMonth = span(all, monthOf(first - oneDay), first),
    };
}

} // namespace

Statistics computeStatistics(const Scan &scan, const PriceTable &prices, TimePoint now)
{
    const Summing summing(scan, prices);
    const Days &all = summing.days();
    LocalCalendar calendar;
    const Day today = calendar.dayOf(now);
    const Day last = all.empty() ? today : std::max(today, all.rbegin()->first);
    return {
        .days = periods(all, last, sameDay, oneDay),
        .weeks = periods(all, last, weekOf, oneWeek),
        .months = periods(all, last, monthOf, longestMonth),
        .sessions = summing.sessions(),
        .totals = totalsOf(all, today),
        .byProvider = {totalsOf(summing.days(Provider::Claude), today),
            totalsOf(summing.days(Provider::Codex), today)},
    };
}

} // namespace indexer
