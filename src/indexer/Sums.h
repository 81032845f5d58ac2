#pragma once

#include "indexer/LocalCalendar.h"
#include "indexer/Money.h"
#include "indexer/PriceTable.h"
#include "indexer/UsageRecord.h"

#include <cstdint>
#include <map>

namespace indexer {

/// Of what sums are kept.
struct SumKey {
    Provider provider = Provider::Claude;
    TextId session = 0;
    Day day {};
    TextId model = 0;

    [[nodiscard]] auto operator<=>(const SumKey &) const = default;
};

/// What answers used and cost. Taking away what was added leaves no trace: counts wrap around.
struct Sum {
    std::uint64_t answers = 0;
    std::uint64_t used = 0;      // of these, those that used anything
    std::uint64_t unpriced = 0;  // of these, those without a known price
    std::uint64_t estimated = 0; // answers whose true cost is likely to be higher
    std::uint64_t input = 0;
    std::uint64_t output = 0;
    std::uint64_t cacheWrite = 0;
    std::uint64_t cacheRead = 0;
    Money::Amount picodollars = 0;

    [[nodiscard]] bool operator==(const Sum &) const = default;
    /// Whether there are as many as there can be, and not fewer than none.
    [[nodiscard]] bool isPossible() const;

    Sum &operator+=(const Sum &other);
    [[nodiscard]] Sum operator-() const;
};

/// Adds up answers by provider, session, local day and model.
class Sums final {
public:
    Sums(const PriceTable &prices, const TextPool &names);

    [[nodiscard]] const std::map<SumKey, Sum> &all() const { return m_sums; }

    void add(const UsageRecord &record);
    void takeAway(const UsageRecord &record);
    void clear() { m_sums.clear(); }

private:
    void change(const UsageRecord &record, bool isAdded);
    [[nodiscard]] Sum sumOf(const UsageRecord &record) const;

    const PriceTable &m_prices;
    const TextPool &m_names;
    LocalCalendar m_calendar;
    std::map<SumKey, Sum> m_sums;
};

} // namespace indexer
