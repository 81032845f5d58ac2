#include "usage/history/RolloutVersions.h"

#include "usage/codex/RolloutPacking.h"

#include <algorithm>
#include <map>

namespace usage {

namespace {

/// Whether the one file told every response and every total that the other did, at the same time.
bool holdsAllOf(const Rollout &rollout, const Rollout &other)
{
    std::map<std::pair<std::string_view, std::uint64_t>, const RolloutRecord *> records;
    for (const RolloutRecord &record : rollout.records) {
        records[{rollout.texts.text(record.thread), record.response}] = &record;
    }
    const auto isRecordHeld = [&](const RolloutRecord &record) {
        const auto held = records.find({other.texts.text(record.thread), record.response});
        return held != records.end() && held->second->time <= record.time
            && record.usage.beyond(held->second->usage) == RolloutUsage {};
    };
    auto held = rollout.counters.begin();
    const auto isCounterHeld = [&](const RolloutCounter &counter) {
        held = std::find_if(held, rollout.counters.end(), [&counter](const RolloutCounter &each) {
            return each.total == counter.total && each.time == counter.time;
        });
        return held != rollout.counters.end();
    };
    return rollout.texts.text(rollout.thread) == other.texts.text(other.thread)
        && std::ranges::all_of(other.records, isRecordHeld)
        && std::ranges::all_of(other.counters, isCounterHeld);
}

} // namespace

RolloutVersions::RolloutVersions(Database &database)
    : m_rollouts(database)
{
}

bool RolloutVersions::mustStay(const PlannedFile &file, const Rollout &rollout)
{
    const auto before = unpackedRollout(m_rollouts.told(file.known->id));
    return before && !holdsAllOf(rollout, *before)
        && std::ranges::none_of(file.gone, [&](const KnownFile *each) {
               const auto held = unpackedRollout(m_rollouts.told(each->id));
               return held && holdsAllOf(*held, *before);
           });
}

std::vector<std::int64_t> RolloutVersions::toldBy(const Rollout &rollout, const PlannedFile &file)
{
    std::vector<std::int64_t> files;
    for (const KnownFile *each : file.gone) {
        const auto before = unpackedRollout(m_rollouts.told(each->id));
        if (before && holdsAllOf(rollout, *before)) {
            files.push_back(each->id);
        }
    }
    return files;
}

} // namespace usage
