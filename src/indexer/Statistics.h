#pragma once

#include "indexer/LocalCalendar.h"
#include "indexer/PriceTable.h"
#include "indexer/Scan.h"
#include "indexer/Spending.h"

#include <set>
#include <string>
#include <vector>

namespace indexer {

/// A day, a week or a month, named by its first day.
struct Period {
    Day start {};
    Spending spending;
    std::set<TextId> sessions;
};

struct SessionSummary {
    std::string title;   // empty when there is none
    std::string project; // likewise
    TimePoint end {};
    Spending spending;
};

/// All that is told of the transcripts. Periods come oldest first and without gaps, from the first
/// usage to today; sessions come newest first.
struct Statistics {
    std::vector<Period> days;
    std::vector<Period> weeks; // they start on Monday
    std::vector<Period> months;
    std::vector<SessionSummary> sessions;
    Period today;
    Period yesterday;
    Period week;
    Period lastWeek;
    Period month;
    Period lastMonth;
};

[[nodiscard]] Statistics computeStatistics(
    const Scan &scan, const PriceTable &prices, TimePoint now);

} // namespace indexer
