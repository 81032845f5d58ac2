#pragma once

#include "usage/pricing/PriceTable.h"
#include "usage/values/Answer.h"
#include "usage/values/LocalCalendar.h"
#include "usage/values/Money.h"
#include "usage/values/Packed.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>

namespace usage {

/// Of what sums are kept.
struct SumKey {
    Provider provider = Provider::Claude;
    TextId session = 0;
    Day day {};
    TextId model = 0;

    [[nodiscard]] auto operator<=>(const SumKey &) const = default;
};

/// What answers used and cost. Taking away what was added leaves no trace: numbers of answers wrap
/// around, and the others are wide enough for any number of answers.
struct Sum {
    using Wide = Money::Amount;

    std::uint64_t answers = 0;
    std::uint64_t used = 0;      // of these, those that used anything
    std::uint64_t unpriced = 0;  // of these, those without a known price
    std::uint64_t assumed = 0;   // and those whose price nobody stated
    std::uint64_t estimated = 0; // answers whose true cost is likely to be another
    Wide input = 0;
    Wide output = 0;
    Wide cacheWrite = 0;
    Wide cacheRead = 0;
    Wide picodollars = 0;

    [[nodiscard]] bool operator==(const Sum &) const = default;
    /// Whether there are as many as there can be, and not fewer than none.
    [[nodiscard]] bool isPossible() const;

    Sum &operator+=(const Sum &other);
    [[nodiscard]] Sum operator-() const;
};

/// For the history, sealed to their place.
void pack(PackedWriter &writer, const Sum &sum, std::uint64_t place);
/// Nothing for bytes that were not packed for this place, or that tell what cannot be.
[[nodiscard]] std::optional<Sum> unpackSum(std::string_view bytes, std::uint64_t place);

/// Adds up answers by provider, session, local day and model.
class Sums final {
public:
    Sums(const PriceTable &prices, const TextPool &names);

    [[nodiscard]] const std::map<SumKey, Sum> &all() const { return m_sums; }

    void add(const Answer &record);
    void takeAway(const Answer &record);
    void clear() { m_sums.clear(); }

private:
    void change(const Answer &record, bool isAdded);
    [[nodiscard]] Sum sumOf(const Answer &record) const;

    const PriceTable &m_prices;
    const TextPool &m_names;
    LocalCalendar m_calendar;
    std::map<SumKey, Sum> m_sums;
};

} // namespace usage
