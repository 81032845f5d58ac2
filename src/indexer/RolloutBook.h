#pragma once

#include "indexer/Lineage.h"
#include "indexer/Rollout.h"
#include "indexer/ThreadBook.h"
#include "indexer/UsageRecord.h"

#include <functional>
#include <map>
#include <unordered_map>
#include <vector>

namespace indexer {

/// All that Codex's rollouts tell. A thread that comes from another one begins with a copy of its
/// history, so what counts is known only when all files are read; their order does not matter.
class RolloutBook final {
public:
    using Visit = std::function<void(const UsageRecord &)>;

    explicit RolloutBook(TextPool &names);

    [[nodiscard]] const ThreadBook &threads() const { return m_threads; }
    [[nodiscard]] ThreadBook &threads() { return m_threads; }
    [[nodiscard]] Lineage &lineage() { return m_lineage; }

    /// Calls `visit(record)` for what each response used, or a row of them that only counters tell.
    void forEach(const Visit &visit) const;
    /// The newest limits that are no copy.
    [[nodiscard]] std::optional<LimitReading> limits() const;

    void addRecord(const RolloutRecord &record);
    /// Takes up a whole file; of several files of one thread that which tells the most.
    void addRollout(Rollout rollout);

private:
    using Family = std::vector<const Rollout *>;
    using OwnCounters = std::function<void(const Rollout &, std::size_t begin)>;

    void forEachOwn(const OwnCounters &visit) const;
    void visitCounters(const Rollout &rollout, std::size_t begin, const Visit &visit) const;
    void visitRecords(const Visit &visit) const;
    [[nodiscard]] bool isOlder(const RolloutRecord &a, const RolloutRecord &b) const;
    [[nodiscard]] UsageRecord usageRecord(TextId thread, const RolloutUsage &usage,
        const RolloutSettings &settings, TimePoint time) const;

    TextPool &m_names;
    Lineage m_lineage;
    ThreadBook m_threads;
    std::unordered_map<TextId, Rollout> m_rollouts; // by thread
    std::vector<RolloutRecord> m_records;
};

} // namespace indexer
