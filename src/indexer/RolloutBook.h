#pragma once

#include "indexer/OwnParts.h"
#include "indexer/UsageRecord.h"

#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace indexer {

/// A thread that the user worked in, with its subagents.
struct RolloutSession {
    TextId thread = 0;
    std::string title; // empty when there is none; the user's own name for it goes before
    TextId folder = 0; // the earliest known
    TimePoint end = TimePoint::min();
};

/// All that the rollouts of one or more families of threads tell. A thread that comes from another
/// one begins with a copy of its history, so what counts is known only when all files of its family
/// are there; their order does not matter.
class RolloutBook final {
public:
    using Visit = std::function<void(const UsageRecord &)>;

    /// What the numbers in all that it tells stand for.
    [[nodiscard]] const TextPool &names() const { return m_names; }
    /// Calls `visit(record)` for what each response used, or a row of them that only counters tell.
    void forEach(const Visit &visit) const;
    /// The newest limits that are no copy and not from the future.
    [[nodiscard]] std::optional<LimitReading> limits(TimePoint now) const;
    /// All of them, also those without any usage.
    [[nodiscard]] std::vector<RolloutSession> sessions() const;

    void add(Rollout rollout);

private:
    struct Response;
    struct Prompt;
    using Responses = std::map<std::pair<TextId, std::uint64_t>, Response>;

    void visitRecords(const Visit &visit) const;
    void visitCounters(const Visit &visit) const;
    void visitCounters(const RolloutFile &file, OwnPart part, const Visit &visit) const;
    void addTo(Responses &responses, const RolloutFile &file) const;
    [[nodiscard]] std::size_t countersToCount(const RolloutFile &file, OwnPart part) const;
    [[nodiscard]] bool isOwn(const RolloutLimitReading &limits, TextId thread, OwnPart part) const;
    void addTitles(std::map<TextId, RolloutSession> &sessions) const;
    [[nodiscard]] std::optional<Prompt> promptOf(const RolloutFile &file, OwnPart part) const;
    [[nodiscard]] RolloutSettings settingsOf(const RolloutFile &file, std::uint32_t number) const;
    [[nodiscard]] UsageRecord usageRecord(TextId thread, const RolloutUsage &usage,
        const RolloutSettings &settings, TimePoint time) const;

    TextPool m_names;
    Lineage m_lineage {m_names};
    std::vector<RolloutFile> m_files;
    /// When each thread's own records begin, of those that have some.
    std::unordered_map<TextId, TimePoint> m_ownRecords;
};

} // namespace indexer
