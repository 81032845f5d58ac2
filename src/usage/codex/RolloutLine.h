#pragma once

#include "usage/values/Usage.h"

#include <array>
#include <optional>
#include <string_view>

namespace usage {

enum class RolloutKind {
    Other,
    SessionMeta,
    TurnContext,
    UsageRecord,
    TokenCount,
    SettingsApplied,
    NameUpdated,
    Prompt
};

/// Token counts as Codex writes them: the input includes both kinds of cached tokens. The last two
/// cost nothing by themselves; they tell totals apart.
struct RolloutUsage {
    std::uint64_t input = 0;
    std::uint64_t cached = 0;
    std::uint64_t cacheWrite = 0;
    std::uint64_t output = 0;    // reasoning included
    std::uint64_t reasoning = 0; // of the output
    std::uint64_t total = 0;

    [[nodiscard]] auto operator<=>(const RolloutUsage &) const = default;

    /// What it grew to beyond another, count by count; a count that fell grew by nothing.
    [[nodiscard]] RolloutUsage beyond(const RolloutUsage &other) const;
    void raiseTo(const RolloutUsage &other);
    RolloutUsage &operator+=(const RolloutUsage &other);
    /// The same with the input apart from the cache. All parts together are the input as stated,
    /// even where more of it is said to be cached.
    [[nodiscard]] Usage disjoint() const;
};

/// One window of a usage limit.
struct RolloutWindow {
    std::optional<double> percent;
    std::optional<double> minutes;
    std::optional<double> resetsAt; // seconds since 1970
    std::optional<double> resetsIn; // seconds from the line's time, in old files
};

struct RolloutLimits {
    std::string_view id; // of the family of limits
    std::string_view plan;
    std::array<RolloutWindow, 2> windows;
};

/// What one line of a Codex rollout says, as far as it matters here. Texts are empty where the line
/// has none; they live as long as the line in the reader's buffer.
struct RolloutLine {
    RolloutKind kind = RolloutKind::Other;
    std::string_view timestamp;

    std::string_view id;        // of the thread that a session_meta is about
    std::string_view createdAt; // likewise
    std::string_view forkedFrom;
    std::string_view parent;
    bool isSubagent = false;

    std::string_view cwd;
    std::string_view model;
    std::string_view serviceTier; // empty also for the standard one
    bool tellsServiceTier = false;
    std::string_view turn;
    std::string_view thread;
    std::string_view response;
    std::string_view title;  // a JSON string with its quotes
    std::string_view prompt; // likewise: what the user wrote

    bool hasUsage = false;
    bool hasImpossibleNumbers = false;
    RolloutUsage usage; // of the response, or of the whole thread so far
    RolloutUsage last;  // of the last response, in a line that counts the whole thread
    RolloutLimits limits;
};

} // namespace usage
