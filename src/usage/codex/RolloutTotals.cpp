#include "usage/codex/RolloutTotals.h"

namespace usage {

namespace {

/// The parts that cost something.
bool isAsMuch(const RolloutUsage &a, const RolloutUsage &b)
{
    return a.disjoint() == b.disjoint();
}

bool goesBeyond(const RolloutUsage &total, const RolloutUsage &covered)
{
    return total.input > covered.input || total.output > covered.output;
}

} // namespace

RolloutTotals::RolloutTotals(Rollout &rollout)
    : m_rollout(rollout)
{
    for (const RolloutCounter &counter : rollout.counters) {
        m_growth = counter.total.beyond(m_highest);
        m_highest.raiseTo(counter.total);
    }
}

void RolloutTotals::addRecord(const RolloutUsage &usage, TextId thread, bool isFirst)
{
    const bool isInLast = cover(usage, isFirst);
    if (thread != 0) {
        addCopied(thread, isInLast);
    } else if (!m_rollout.countersBeforeOwn) {
        m_rollout.countersBeforeOwn = m_rollout.counters.size() - (isInLast ? 1 : 0);
    }
}

/// Codex writes a response's record and then the total that includes it. A total may stand in front
/// of its record as well; true if the last one seems to.
bool RolloutTotals::cover(const RolloutUsage &usage, bool isFirst)
{
    std::vector<RolloutCounter> &counters = m_rollout.counters;
    const bool isInLast =
        !counters.empty() && (isFirst || counters.back().isBeyond) && isAsMuch(usage, m_growth);
    if (isFirst) {
        m_rollout.covered = m_highest;
    }
    if (isInLast) {
        counters.back().isBeyond = false;
    } else {
        m_rollout.covered += usage;
    }
    return isInLast;
}

/// All that stands in front of another thread's record is a copy.
void RolloutTotals::addCopied(TextId thread, bool isInLast)
{
    RolloutCopies &copies = m_rollout.copies;
    copies.counters = m_rollout.counters.size();
    if (copies.thread == 0) {
        copies.thread = thread;
        copies.bare = copies.counters - (isInLast ? 1 : 0);
    }
}

/// Where the first record seemed to be in the last counter and the next one grows by as much again,
/// it is in that one.
void RolloutTotals::reconsiderFirst(const RolloutUsage &growth)
{
    RolloutCopies &copies = m_rollout.copies;
    const bool isOwn = copies.thread == 0;
    const std::size_t bare = isOwn ? m_rollout.countersBeforeOwn.value_or(0) : copies.bare;
    if (m_rollout.records.size() != 1 || m_rollout.counters.size() != bare + 1
        || goesBeyond(m_rollout.covered, m_highest) || !isAsMuch(growth, m_growth)) {
        return;
    }
    m_rollout.covered += growth;
    if (isOwn) {
        m_rollout.countersBeforeOwn = bare + 1;
    } else {
        copies.bare = bare + 1;
    }
}

void RolloutTotals::addCounter(RolloutCounter counter, const RolloutUsage &last)
{
    const RolloutUsage growth = counter.total.beyond(m_highest);
    reconsiderFirst(growth);
    RolloutUsage &covered = m_rollout.covered;
    const bool includesRecord = goesBeyond(covered, m_highest);
    m_growth = growth;
    m_highest.raiseTo(counter.total);
    counter.isSum = !isAsMuch(growth, last);
    counter.isBeyond = !m_rollout.records.empty() && goesBeyond(m_highest, covered);
    if (counter.isBeyond) {
        covered.raiseTo(m_highest);
    }
    m_rollout.counters.push_back(counter);
    if (includesRecord && !m_rollout.countersBeforeOwn) {
        m_rollout.copies.counters = m_rollout.counters.size();
    }
}

} // namespace usage
