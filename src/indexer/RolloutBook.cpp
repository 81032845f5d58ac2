#include "indexer/RolloutBook.h"

#include <algorithm>
#include <tuple>

namespace indexer {

namespace {

/// A thread has several files while it is moved or compressed; all but one are then older states.
bool isBetter(const Rollout &a, const Rollout &b)
{
    const auto rank = [](const Rollout &rollout) {
        return std::make_tuple(rollout.counters.size(), rollout.countersBeforeRecords.has_value(),
            rollout.limits ? rollout.limits->time : TimePoint::min());
    };
    return rank(b) < rank(a);
}

} // namespace

RolloutBook::RolloutBook(TextPool &names)
    : m_names(names)
    , m_lineage(names)
    , m_threads(names)
{
}

void RolloutBook::forEach(const Visit &visit) const
{
    visitRecords(visit);
    forEachOwn(
        [&](const Rollout &rollout, std::size_t begin) { visitCounters(rollout, begin, visit); });
}

/// Tells of each thread from which of its counters on they are its own. A total that an older
/// thread of the family holds as well is a copy, and so is all that stands in front of it.
void RolloutBook::forEachOwn(const OwnCounters &visit) const
{
    std::unordered_map<TextId, Family> families;
    for (const auto &[thread, rollout] : m_rollouts) {
        families[m_lineage.rootOf(thread)].push_back(&rollout);
    }
    for (auto &[root, family] : families) {
        std::sort(family.begin(), family.end(), [this](const Rollout *a, const Rollout *b) {
            return m_lineage.ageOf(a->thread) < m_lineage.ageOf(b->thread);
        });
        std::map<RolloutUsage, const Rollout *> holders;
        for (const Rollout *rollout : family) {
            std::size_t begin = 0;
            for (std::size_t i = 0; i < rollout->counters.size(); ++i) {
                const auto [holder, isNew] = holders.emplace(rollout->counters[i].total, rollout);
                if (holder->second != rollout) {
                    begin = i + 1;
                }
            }
            visit(*rollout, begin);
        }
    }
}

/// Counts by the growth beyond the highest total so far. Where responses have records of their
/// own, only what came before these, and that only of a thread that copied nothing.
void RolloutBook::visitCounters(const Rollout &rollout, std::size_t begin, const Visit &visit) const
{
    std::size_t end = rollout.counters.size();
    if (rollout.countersBeforeRecords) {
        end = m_lineage.hasParent(rollout.thread) ? 0 : *rollout.countersBeforeRecords;
    }
    RolloutUsage highest;
    for (std::size_t i = 0; i < end; ++i) {
        const RolloutCounter &counter = rollout.counters[i];
        const RolloutUsage growth = counter.total.beyond(highest);
        highest.raiseTo(counter.total);
        if (i < begin || growth == RolloutUsage {}) {
            continue;
        }
        UsageRecord record = usageRecord(rollout.thread, growth, counter.settings, counter.time);
        record.isSum = growth != counter.last;
        visit(record);
    }
}

/// Each response of a family once, as its oldest thread tells it, at its earliest time.
void RolloutBook::visitRecords(const Visit &visit) const
{
    std::map<std::pair<TextId, TextId>, RolloutRecord> responses;
    for (const RolloutRecord &record : m_records) {
        const auto [known, isNew] = responses.emplace(
            std::make_pair(m_lineage.rootOf(record.thread), record.response), record);
        if (isNew) {
            continue;
        }
        RolloutRecord &held = known->second;
        RolloutRecord merged = isOlder(record, held) ? record : held;
        merged.usage.raiseTo(held.usage);
        merged.usage.raiseTo(record.usage);
        merged.time = std::min(held.time, record.time);
        held = merged;
    }
    for (const auto &[key, record] : responses) {
        visit(usageRecord(record.thread, record.usage, record.settings, record.time));
    }
}

bool RolloutBook::isOlder(const RolloutRecord &a, const RolloutRecord &b) const
{
    const auto rank = [this](const RolloutRecord &record) {
        return std::make_tuple(m_lineage.ageOf(record.thread), record.time,
            record.settings.model == 0, m_names.text(record.settings.model),
            m_names.text(record.settings.folder));
    };
    return rank(a) < rank(b);
}

UsageRecord RolloutBook::usageRecord(
    TextId thread, const RolloutUsage &usage, const RolloutSettings &settings, TimePoint time) const
{
    const Standing standing(false, time);
    UsageRecord record;
    record.usage = usage.disjoint();
    record.standing = standing;
    record.session = {standing, m_lineage.sessionOf(thread)};
    record.model = {standing, settings.model};
    record.folder = {standing, settings.folder};
    record.speed = settings.speed;
    record.tier = settings.tier;
    record.provider = Provider::Codex;
    return record;
}

std::optional<LimitReading> RolloutBook::limits() const
{
    const auto isOlderReading = [](const LimitReading &a, const LimitReading &b) {
        return std::tie(a.time, a.plan) < std::tie(b.time, b.plan);
    };
    std::optional<LimitReading> newest;
    forEachOwn([&](const Rollout &rollout, std::size_t begin) {
        const bool isOwn = !m_lineage.hasParent(rollout.thread) || rollout.hasOwnRecordAtLimits
            || (begin > 0 && rollout.countersAtLimits > begin);
        if (rollout.limits && isOwn && (!newest || isOlderReading(*newest, *rollout.limits))) {
            newest = rollout.limits;
        }
    });
    return newest;
}

void RolloutBook::addRecord(const RolloutRecord &record)
{
    m_records.push_back(record);
}

void RolloutBook::addRollout(Rollout rollout)
{
    const TextId thread = rollout.thread;
    const auto [held, isNew] = m_rollouts.try_emplace(thread);
    if (isNew || isBetter(rollout, held->second)) {
        held->second = std::move(rollout);
    }
}

} // namespace indexer
