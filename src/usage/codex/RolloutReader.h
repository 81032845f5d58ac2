#pragma once

#include "usage/codex/RolloutTotals.h"

#include <map>
#include <unordered_map>

namespace usage {

/// Takes up one rollout line by line; what a line means depends on those before it. A file may be
/// read in any pieces, each by a reader of its own that goes on with the same rollout.
class RolloutReader final {
public:
    /// `rollout` has to stay where it is, and is changed by nobody else meanwhile.
    explicit RolloutReader(Rollout &rollout);

    /// Only a line with a time can tell of usage.
    void add(const RolloutLine &line, std::optional<TimePoint> time);

private:
    void addMeta(const RolloutLine &line, std::optional<TimePoint> time);
    [[nodiscard]] RolloutMeta &metaOf(TextId thread);
    void addTurn(const RolloutLine &line);
    void change(const RolloutLine &line);
    void rememberTurn();
    void addTimed(const RolloutLine &line, TimePoint time);
    void addRecord(const RolloutLine &line, TimePoint time);
    void addCounter(const RolloutLine &line, TimePoint time);
    void addName(const RolloutLine &line, TimePoint time);
    void addPrompt(const RolloutLine &line, TimePoint time);
    void addLimits(const RolloutLimits &limits, TimePoint time);
    [[nodiscard]] RolloutRecord &recordOf(const RolloutRecord &record);
    [[nodiscard]] std::uint32_t settingsOf(std::string_view turn);
    [[nodiscard]] std::uint32_t numberOf(const RolloutSettings &settings);

    Rollout &m_rollout;
    std::unordered_map<std::uint64_t, std::uint32_t> m_records; // by response and thread
    std::map<RolloutSettings, std::uint32_t> m_settings;        // their numbers
    RolloutTotals m_totals;
};

} // namespace usage
