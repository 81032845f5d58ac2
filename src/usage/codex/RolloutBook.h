#pragma once

#include "usage/codex/CopyDetection.h"
#include "usage/codex/Lineage.h"
#include "usage/values/Answer.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace usage {

/// A thread that the user worked in, with its subagents.
struct RolloutSession {
    TextId thread = 0;
    std::string title;  // empty when there is none; the user's own name for it goes before
    std::string prompt; // what the user wrote first, where the title is a name
    TextId folder = 0;  // the earliest known
    TimePoint end = TimePoint::min();
};

/// All that the rollouts of one or more families of threads tell. A thread that comes from another
/// one begins with a copy of its history, so what counts is known only when all files of its family
/// are there; their order does not matter.
class RolloutBook final {
public:
    using Visit = std::function<void(const Answer &)>;

    /// What the numbers in all that it tells stand for.
    [[nodiscard]] const TextPool &names() const { return *m_names; }
    /// Calls `visit(record)` for what each response used, or a row of them that only counters tell.
    void forEach(const Visit &visit) const;
    /// The newest limits that are no copy and not from the future.
    [[nodiscard]] std::optional<LimitReading> limits(TimePoint now) const;
    /// All of them, also those without any usage.
    [[nodiscard]] std::vector<RolloutSession> sessions() const;

    void add(Rollout rollout);

private:
    [[nodiscard]] const std::vector<OwnPart> &parts() const;
    void visitRecords(const Visit &visit) const;
    void visitCounters(const Visit &visit) const;
    void visitCounters(const FamilyMember &file, const OwnPart &part, const Visit &visit) const;
    [[nodiscard]] bool isOwn(
        const RolloutLimitReading &limits, TextId thread, const OwnPart &part) const;
    [[nodiscard]] Answer usageRecord(TextId thread, const RolloutUsage &usage,
        const RolloutSettings &settings, TimePoint time) const;

    /// Stays where it is when the book is handed on, since the lineage refers to it.
    std::unique_ptr<TextPool> m_names = std::make_unique<TextPool>();
    Lineage m_lineage {*m_names};
    std::vector<FamilyMember> m_files;
    mutable std::vector<OwnPart> m_parts; // of each file, once asked for
};

} // namespace usage
