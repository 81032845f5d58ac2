#pragma once

#include "formats/TimeStamp.h"
#include "usage/codex/RolloutLine.h"
#include "usage/limits/LimitReading.h"
#include "usage/values/OwnTexts.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace usage {

/// With what a response was ordered.
struct RolloutSettings {
    TextId model = 0;
    TextId folder = 0; // the working directory
    Speed speed = Speed::Standard;
    ServiceTier tier = ServiceTier::Standard;

    [[nodiscard]] auto operator<=>(const RolloutSettings &) const = default;
};

/// The front of a thread: its own, or the copy of one that it comes from.
struct RolloutMeta {
    TextId thread = 0;
    TextId parent = 0;
    std::optional<TimePoint> created;
    bool isSubagent = false;
    bool isCopy = false; // or the parent is told by the order of the fronts alone
    bool isRead = true;  // false for a front that ought to be there
};

/// What a thread had used so far, at one moment.
struct RolloutCounter {
    RolloutUsage total;
    TimePoint time {};
    std::uint32_t settings = 0;
    bool isSum = false;    // it did not grow by the last response alone
    bool isBeyond = false; // behind a record, it grew by something that has none
};

/// What one response used, put together from all lines that tell of it.
struct RolloutRecord {
    TextId thread = 0; // 0 is the file's own
    std::uint64_t response = 0;
    RolloutUsage usage;
    TimePoint time {}; // the earliest
    std::uint32_t settings = 0;
};

/// What a file is known to have copied from other threads, because records tell of these.
struct RolloutCopies {
    TextId thread = 0;        // of the first of these records, 0 when there is none
    std::size_t bare = 0;     // counters before that record, which are the same thread's
    std::size_t counters = 0; // and up to the one that includes the last of them
};

/// The settings of a turn that was under way lately.
struct RolloutTurn {
    std::uint64_t id = 0; // 0 before the first turn
    std::uint32_t settings = 0;
};

struct RolloutPrompt {
    std::string text;
    TimePoint time {};
    std::size_t counters = 0; // how many came before it
};

struct RolloutName {
    std::string text; // empty when it was taken back
    TimePoint time = TimePoint::min();
};

struct RolloutLimitReading {
    LimitReading reading;
    std::size_t counters = 0; // how many came before it, and its own
    bool isBehindOwn = false; // behind a record of the thread's own
};

/// What one file told so far of its thread, with what it copied from the threads it comes from, and
/// all that is needed to read on behind it. Texts go by their numbers in `texts`, settings by
/// theirs in `settings`, turns and responses by their hashes.
struct Rollout {
    OwnTexts texts;
    std::vector<RolloutSettings> settings;
    TextId thread = 0;
    bool isNamed = false;                 // `thread` holds, whatever follows
    std::vector<RolloutMeta> metas;       // one for each thread
    std::vector<RolloutRecord> records;   // one for each response of a thread
    std::vector<RolloutCounter> counters; // each other than the one before it
    /// How many counters there were before the first of the thread's own records.
    std::optional<std::size_t> countersBeforeOwn;
    RolloutCopies copies;
    RolloutUsage covered; // the total up to which records tell of it

    RolloutName name;
    std::optional<RolloutPrompt> prompt; // the first in the file
    /// Prompts of a thread that comes from another, some of which may be its own.
    std::vector<RolloutPrompt> laterPrompts;
    bool hasCopiedPrompts = false;             // all in front of `laterPrompts` are copies
    std::optional<RolloutLimitReading> limits; // the last
    TimePoint end = TimePoint::min();          // the latest line

    RolloutSettings current;
    std::uint64_t turn = 0;
    std::vector<RolloutTurn> turns; // the latest ones

    /// Whether a record tells of what the counter of that number grew by.
    [[nodiscard]] bool hasRecordOf(std::size_t number) const;
};

/// `stem` is the file's name without its endings, whose last part is the thread's id.
[[nodiscard]] Rollout startRollout(std::string_view stem);

/// The ids of the threads that a file tells of, its own first: all that share an id with others
/// have to be looked at together with these.
[[nodiscard]] std::vector<std::string> kinOf(const Rollout &rollout);

} // namespace usage
