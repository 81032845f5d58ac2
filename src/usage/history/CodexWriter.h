#pragma once

#include "usage/history/tables/RolloutTable.h"
#include "usage/history/tables/SessionTable.h"
#include "usage/limits/LimitsFile.h"
#include "usage/pricing/Sums.h"

#include <optional>
#include <utility>
#include <vector>

namespace usage {

/// The newest limits that any rollout told, if there are any.
[[nodiscard]] std::optional<WrittenLimits> storedLimits(Database &database);

/// Stores Codex's rollouts and has sums and sessions follow, family by family: what a thread used
/// itself shows only beside all that it may have copied.
class CodexWriter final {
public:
    /// By file; null for one that is to be forgotten.
    using Rollouts = std::vector<std::pair<std::int64_t, Rollout *>>;

    CodexWriter(Database &database, SessionTable &sessions, TextPool &names, TimePoint now);

    /// Takes up later states of some files, which are empty afterwards; sums have to be made anew.
    void put(const Rollouts &rollouts);
    /// The same, with the sums changed by what that makes of the families.
    void put(const Rollouts &rollouts, Sums &sums);
    /// Adds all families to empty sums and shows their sessions.
    void addAll(Sums &sums);

private:
    void put(const std::vector<KeptRollout> &rollouts);
    void add(const RolloutBook &book, Sums &sums);
    void keepLimits();
    void takeAway(const RolloutBook &book, Sums &sums);
    [[nodiscard]] Answer withOurNames(Answer record, const TextPool &names);

    Database &m_database;
    SessionTable &m_sessions;
    TextPool &m_names;
    TimePoint m_now;
    RolloutTable m_rollouts;
    std::optional<LimitReading> m_limits; // the newest met so far
};

} // namespace usage
