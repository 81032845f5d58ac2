#include "usage/statistics/Spending.h"

#include <algorithm>
#include <limits>

namespace usage {

namespace {

constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

std::uint64_t narrowed(Sum::Wide tokens)
{
    return static_cast<std::uint64_t>(std::min<Sum::Wide>(tokens, largest));
}

std::uint64_t sum(std::uint64_t a, std::uint64_t b)
{
    const std::uint64_t result = a + b;
    return result < a ? largest : result;
}

Doubt doubtOf(const Sum &sum)
{
    return sum.unpriced > 0 ? Doubt::Unknown
        : sum.assumed > 0   ? Doubt::Assumed
        : sum.estimated > 0 ? Doubt::Incomplete
                            : Doubt::None;
}

void addTo(std::optional<Money> &total, std::optional<Money> part)
{
    if (part) {
        total = total.value_or(Money {});
        *total += *part;
    }
}

} // namespace

std::uint64_t TokenSums::total() const
{
    return sum(sum(input, output), sum(cacheWrite, cacheRead));
}

TokenSums &TokenSums::operator+=(const TokenSums &other)
{
    input = sum(input, other.input);
    output = sum(output, other.output);
    cacheWrite = sum(cacheWrite, other.cacheWrite);
    cacheRead = sum(cacheRead, other.cacheRead);
    return *this;
}

ModelSpending &ModelSpending::operator+=(const ModelSpending &other)
{
    tokens += other.tokens;
    addTo(cost, other.cost);
    doubt = std::max(doubt, other.doubt);
    return *this;
}

std::optional<Money> Spending::cost() const
{
    std::optional<Money> total;
    for (const auto &[model, part] : models) {
        addTo(total, part.cost);
    }
    return isEmpty() ? Money {} : total;
}

void Spending::add(std::string_view model, const Sum &sum)
{
    isEstimated = isEstimated || sum.estimated > 0;
    if (sum.used == 0) {
        return;
    }
    const TokenSums used {.input = narrowed(sum.input),
        .output = narrowed(sum.output),
        .cacheWrite = narrowed(sum.cacheWrite),
        .cacheRead = narrowed(sum.cacheRead)};
    const bool isPriced = sum.used > sum.unpriced;
    auto found = models.find(model);
    if (found == models.end()) {
        found = models.emplace(model, ModelSpending {}).first;
    }
    found->second +=
        {used, isPriced ? std::optional(Money(sum.picodollars)) : std::nullopt, doubtOf(sum)};
    tokens += used;
}

Spending &Spending::operator+=(const Spending &other)
{
    tokens += other.tokens;
    for (const auto &[model, part] : other.models) {
        models[model] += part;
    }
    isEstimated = isEstimated || other.isEstimated;
    return *this;
}

} // namespace usage
