#include "indexer/RolloutLine.h"

namespace indexer {

namespace {

std::uint64_t difference(std::uint64_t a, std::uint64_t b)
{
    return a > b ? a - b : 0;
}

} // namespace

RolloutUsage RolloutUsage::beyond(const RolloutUsage &other) const
{
    return {.input = difference(input, other.input),
        .cached = difference(cached, other.cached),
        .cacheWrite = difference(cacheWrite, other.cacheWrite),
        .output = difference(output, other.output)};
}

void RolloutUsage::raiseTo(const RolloutUsage &other)
{
    input = std::max(input, other.input);
    cached = std::max(cached, other.cached);
    cacheWrite = std::max(cacheWrite, other.cacheWrite);
    output = std::max(output, other.output);
}

Usage RolloutUsage::disjoint() const
{
    return {.input = difference(difference(input, cached), cacheWrite),
        .output = output,
        .cacheRead = cached,
        .cacheCreation = cacheWrite};
}

} // namespace indexer
