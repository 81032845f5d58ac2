#include "usage/codex/RolloutLine.h"

namespace usage {

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
        .output = difference(output, other.output),
        .reasoning = difference(reasoning, other.reasoning),
        .total = difference(total, other.total)};
}

void RolloutUsage::raiseTo(const RolloutUsage &other)
{
    input = std::max(input, other.input);
    cached = std::max(cached, other.cached);
    cacheWrite = std::max(cacheWrite, other.cacheWrite);
    output = std::max(output, other.output);
    reasoning = std::max(reasoning, other.reasoning);
    total = std::max(total, other.total);
}

RolloutUsage &RolloutUsage::operator+=(const RolloutUsage &other)
{
    input += other.input;
    cached += other.cached;
    cacheWrite += other.cacheWrite;
    output += other.output;
    reasoning += other.reasoning;
    total += other.total;
    return *this;
}

Usage RolloutUsage::disjoint() const
{
    const std::uint64_t read = std::min(cached, input);
    const std::uint64_t written = std::min(cacheWrite, input - read);
    return {.input = input - read - written,
        .output = output,
        .cacheRead = read,
        .cacheCreation = written};
}

} // namespace usage
