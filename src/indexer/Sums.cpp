#include "indexer/Sums.h"

#include <array>
#include <limits>

namespace indexer {

namespace {

constexpr std::array counts {&Sum::answers, &Sum::used, &Sum::unpriced, &Sum::estimated,
    &Sum::input, &Sum::output, &Sum::cacheWrite, &Sum::cacheRead};

} // namespace

bool Sum::isPossible() const
{
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return answers > 0 && answers <= most && used <= answers && unpriced <= used
        && estimated <= answers && picodollars >= 0;
}

Sum &Sum::operator+=(const Sum &other)
{
    for (const auto count : counts) {
        this->*count += other.*count;
    }
    picodollars += other.picodollars;
    return *this;
}

Sum Sum::operator-() const
{
    Sum negative;
    for (const auto count : counts) {
        negative.*count = -(this->*count);
    }
    negative.picodollars = -picodollars;
    return negative;
}

Sums::Sums(const PriceTable &prices, const TextPool &names)
    : m_prices(prices)
    , m_names(names)
{
}

void Sums::add(const UsageRecord &record)
{
    change(record, true);
}

void Sums::takeAway(const UsageRecord &record)
{
    change(record, false);
}

void Sums::change(const UsageRecord &record, bool isAdded)
{
    const Sum sum = sumOf(record);
    m_sums[{record.provider, record.session.text, m_calendar.dayOf(record.time()),
        record.model.text}] += isAdded ? sum : -sum;
}

Sum Sums::sumOf(const UsageRecord &record) const
{
    const auto price = m_prices.price({.model = m_names.text(record.model.text),
        .time = record.time(),
        .usage = record.usage,
        .speed = record.speed,
        .tier = record.tier,
        .isSum = record.isSum});
    // A request that used nothing cost nothing, whoever answered it.
    const bool isUsed = record.usage != Usage {};
    const bool isUnpriced = isUsed && !price;
    const bool isEstimated = isUnpriced || record.isIncomplete() || (price && price->isEstimated);
    return {.answers = 1,
        .used = isUsed ? 1U : 0U,
        .unpriced = isUnpriced ? 1U : 0U,
        .estimated = isEstimated ? 1U : 0U,
        .input = record.usage.input,
        .output = record.usage.output,
        .cacheWrite = record.usage.cacheWrite(),
        .cacheRead = record.usage.cacheRead,
        .picodollars = isUsed && price ? price->cost.picodollars() : 0};
}

} // namespace indexer
