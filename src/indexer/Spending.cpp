#include "indexer/Spending.h"

#include <limits>

namespace indexer {

namespace {

std::uint64_t sum(std::uint64_t a, std::uint64_t b)
{
    const std::uint64_t result = a + b;
    return result < a ? std::numeric_limits<std::uint64_t>::max() : result;
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
    const TokenSums used {.input = sum.input,
        .output = sum.output,
        .cacheWrite = sum.cacheWrite,
        .cacheRead = sum.cacheRead};
    const bool isPriced = sum.used > sum.unpriced;
    auto found = models.find(model);
    if (found == models.end()) {
        found = models.emplace(model, ModelSpending {}).first;
    }
    found->second += {used, isPriced ? std::optional(Money(sum.picodollars)) : std::nullopt};
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

} // namespace indexer
