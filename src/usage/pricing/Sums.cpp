#include "usage/pricing/Sums.h"

#include <algorithm>
#include <array>
#include <limits>

namespace usage {

namespace {

constexpr std::array counts {
    &Sum::answers, &Sum::used, &Sum::unpriced, &Sum::assumed, &Sum::estimated};
constexpr std::array amounts {
    &Sum::input, &Sum::output, &Sum::cacheWrite, &Sum::cacheRead, &Sum::picodollars};
constexpr unsigned halfOfWide = 64;

} // namespace

bool Sum::isPossible() const
{
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return answers > 0 && answers <= most && used <= answers && unpriced <= used && assumed <= used
        && estimated <= answers
        && std::ranges::all_of(amounts, [this](auto amount) { return this->*amount >= 0; });
}

Sum &Sum::operator+=(const Sum &other)
{
    for (const auto count : counts) {
        this->*count += other.*count;
    }
    for (const auto amount : amounts) {
        this->*amount += other.*amount;
    }
    return *this;
}

Sum Sum::operator-() const
{
    Sum negative;
    for (const auto count : counts) {
        negative.*count = -(this->*count);
    }
    for (const auto amount : amounts) {
        negative.*amount = -(this->*amount);
    }
    return negative;
}

void pack(PackedWriter &writer, const Sum &sum, std::uint64_t place)
{
    for (const auto count : counts) {
        writer.number(sum.*count);
    }
    for (const auto amount : amounts) {
        writer.number(static_cast<std::uint64_t>(sum.*amount));
        writer.number(static_cast<std::uint64_t>(sum.*amount >> halfOfWide));
    }
    writer.seal(place);
}

std::optional<Sum> unpackSum(std::string_view bytes, std::uint64_t place)
{
    const auto whole = unsealed(bytes, place);
    PackedReader reader(whole.value_or(std::string_view {}));
    Sum sum;
    for (const auto count : counts) {
        sum.*count = reader.number();
    }
    for (const auto amount : amounts) {
        sum.*amount = reader.number();
        sum.*amount += static_cast<Sum::Wide>(static_cast<std::int64_t>(reader.number()))
            << halfOfWide;
    }
    return reader.isSound() && reader.isAtEnd() && sum.isPossible() ? std::optional(sum)
                                                                    : std::nullopt;
}

Sums::Sums(const PriceTable &prices, const TextPool &names)
    : m_prices(prices)
    , m_names(names)
{
}

void Sums::add(const Answer &record)
{
    change(record, true);
}

void Sums::takeAway(const Answer &record)
{
    change(record, false);
}

void Sums::change(const Answer &record, bool isAdded)
{
    const Sum sum = sumOf(record);
    m_sums[{record.provider, record.session.text, m_calendar.dayOf(record.time()),
        record.model.text}] += isAdded ? sum : -sum;
}

Sum Sums::sumOf(const Answer &record) const
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
    const bool isEstimated = isUnpriced || record.isIncomplete()
        || (price && (price->isTooLow || (isUsed && price->isAssumed)));
    return {.answers = 1,
        .used = isUsed ? 1U : 0U,
        .unpriced = isUnpriced ? 1U : 0U,
        .assumed = isUsed && price && price->isAssumed ? 1U : 0U,
        .estimated = isEstimated ? 1U : 0U,
        .input = record.usage.input,
        .output = record.usage.output,
        .cacheWrite = record.usage.cacheWrite(),
        .cacheRead = record.usage.cacheRead,
        .picodollars = isUsed && price ? price->cost.picodollars() : 0};
}

} // namespace usage
