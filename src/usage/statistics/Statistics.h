#pragma once

#include "usage/history/History.h"
#include "usage/statistics/Spending.h"
#include "usage/statistics/StatisticsFilter.h"
#include "usage/values/LocalCalendar.h"

#include <set>
#include <string>
#include <vector>

namespace usage {

/// Ids of sessions are told apart within each provider only.
using SessionKey = std::pair<Provider, TextId>;

/// A day, a week or a month, named by its first day.
struct Period {
    Day start {};
    Spending spending;
    std::set<SessionKey> sessions;
};

/// The periods around today.
struct Totals {
    Period today;
    Period yesterday;
    Period week;
    Period lastWeek;
    Period month;
    Period lastMonth;
};

struct SessionSummary {
    Provider provider = Provider::Claude;
    std::string title;   // empty when there is none
    std::string project; // likewise
    TimePoint end {};
    Spending spending;
};

/// All that is told of the transcripts, of all providers together. Periods come oldest first and
/// without gaps, from the first usage to today; sessions come newest first.
struct Statistics {
    std::vector<Period> days;
    std::vector<Period> weeks; // they start on Monday
    std::vector<Period> months;
    std::vector<SessionSummary> sessions;
    Totals totals;
    std::array<Totals, providerNames.size()> byProvider;
};

/// From what a history holds, as far as the filter lets it through. Models are named as the prices
/// list them. Empty where that is damaged, which the history knows then.
[[nodiscard]] Statistics computeStatistics(const History &history, const PriceTable &prices,
    const StatisticsFilter &filter, TimePoint now);

} // namespace usage
