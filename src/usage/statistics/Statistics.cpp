#include "usage/statistics/Statistics.h"

#include "usage/history/tables/NoteTable.h"
#include "usage/history/tables/SealedTables.h"
#include "usage/history/tables/SessionTable.h"
#include "usage/history/tables/SpentTable.h"
#include "usage/history/tables/StoredTexts.h"
#include "usage/history/tables/ThreadNameTable.h"
#include "usage/lines/Title.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace usage {

namespace {

using namespace std::chrono;

using Days = std::map<Day, Period>;

using ThreadTexts = std::map<std::string, std::string, std::less<>>;

std::string textOf(const ThreadTexts &texts, std::string_view thread)
{
    const auto found = texts.find(thread);
    return found == texts.end() ? std::string() : found->second;
}

/// The name that the user gave to a thread, or else the title in Codex's database, unless that is
/// just what the user wrote first; or else what its file tells.
std::string threadTitle(const SessionFace &face, const std::string &name, const std::string &title)
{
    const std::string &prompt = face.prompt.empty() ? face.title : face.prompt;
    if (!name.empty()) {
        return name;
    }
    return title.empty() || title == prompt ? face.title : title;
}

/// Adds up the sums of a history by days and sessions.
class Summing final {
public:
    Summing(const History &history, const PriceTable &prices, const StatisticsFilter &filter);

    [[nodiscard]] const Days &days() const { return m_days; }
    [[nodiscard]] const Days &days(Provider provider) const
    {
        return m_byProvider.at(static_cast<std::size_t>(provider));
    }
    /// The newest ones first.
    [[nodiscard]] std::vector<SessionSummary> sessions() const;

private:
    void add(const SumKey &key, const Sum &sum);
    [[nodiscard]] std::string_view modelOf(const SumKey &key);

    Database &m_database;
    const PriceTable &m_prices;
    StoredTexts m_names;
    std::unordered_map<TextId, std::string_view> m_models; // that were asked for
    Days m_days;
    std::array<Days, providerNames.size()> m_byProvider;
    std::map<SessionKey, Spending> m_sessions;
};

Summing::Summing(const History &history, const PriceTable &prices, const StatisticsFilter &filter)
    : m_database(history.database())
    , m_prices(prices)
    , m_names(history.database())
{
    SpentTable(m_database).visitAll([&](const SumKey &key, const Sum &sum) {
        if (filter.admits(key.provider) && filter.admits(key.day)) {
            add(key, sum);
        }
    });
}

void Summing::add(const SumKey &key, const Sum &sum)
{
    if (std::max(key.session, key.model) >= m_names.names().size()) {
        m_database.setDamaged(); // the texts at the end are gone
        return;
    }
    const SessionKey session(key.provider, key.session);
    const std::string_view model = modelOf(key);
    for (Days *days : {&m_days, &m_byProvider.at(static_cast<std::size_t>(key.provider))}) {
        Period &period = (*days)[key.day];
        period.start = key.day;
        period.spending.add(model, sum);
        if (key.session != 0) {
            period.sessions.insert(session);
        }
    }
    if (key.session != 0) {
        m_sessions[session].add(model, sum);
    }
}

/// One name for all the ids of a model: transcripts write it in several ways.
std::string_view Summing::modelOf(const SumKey &key)
{
    const auto [known, isNew] = m_models.try_emplace(key.model);
    if (isNew) {
        known->second = m_prices.baseId(m_names.names().text(key.model));
    }
    return known->second;
}

std::vector<SessionSummary> Summing::sessions() const
{
    const ThreadTexts names = threadNames(m_database);
    const ThreadTexts titles = threadTitles(m_database);
    struct Entry {
        SessionSummary summary;
        std::string_view id;
    };
    std::vector<Entry> entries;
    entries.reserve(m_sessions.size());
    SessionTable::visitAll(m_database, [&](Provider provider, TextId id, const SessionFace &face) {
        const auto found = m_sessions.find({provider, id});
        if (found == m_sessions.end()) {
            return;
        }
        const std::string_view name = m_names.names().text(id);
        const std::string title = provider == Provider::Codex
            ? threadTitle(face, textOf(names, name), textOf(titles, name))
            : face.title;
        entries.push_back(
            {{provider, title, tidyName(folderName(face.folder)), face.end, found->second}, name});
    });
    std::ranges::sort(entries, [](const Entry &a, const Entry &b) {
        return std::make_tuple(b.summary.end, a.id, a.summary.provider)
            < std::make_tuple(a.summary.end, b.id, b.summary.provider);
    });
    std::vector<SessionSummary> result;
    result.reserve(entries.size());
    std::ranges::transform(
        entries, std::back_inserter(result), [](Entry &entry) { return std::move(entry.summary); });
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

/// Nothing is made of rows that are not as they were written.
bool isSound(Database &database)
{
    const Damage damage = damageOfStatistics(database);
    if (damage == Damage::Whole) {
        database.setDamaged();
    } else if (damage == Damage::Made) {
        NoteTable(database).set(sumsFact, outdatedSums);
    }
    return damage == Damage::None;
}

} // namespace

Statistics computeStatistics(
    const History &history, const PriceTable &prices, const StatisticsFilter &filter, TimePoint now)
{
    if (!isSound(history.database())) {
        return {};
    }
    const Summing summing(history, prices, filter);
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

} // namespace usage
