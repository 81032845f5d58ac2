#pragma once

#include "indexer/Moment.h"
#include "indexer/Provider.h"
#include "indexer/TextPool.h"
#include "indexer/Usage.h"

namespace indexer {

/// How much a line weighs beside others that tell of the same answer: lines copied from another
/// session come last, and of the rest the earliest comes first.
class Standing final {
public:
    Standing() = default;
    /// `time` is not before 1970.
    Standing(bool isForked, TimePoint time)
        : m_rank(static_cast<std::uint64_t>(time.time_since_epoch().count())
            | (isForked ? forkedBit : 0))
    {
    }

    [[nodiscard]] auto operator<=>(const Standing &) const = default;
    [[nodiscard]] TimePoint time() const
    {
        return TimePoint(TimePoint::duration(static_cast<std::int64_t>(m_rank & ~forkedBit)));
    }

private:
    static constexpr std::uint64_t forkedBit = std::uint64_t {1} << 63U;

    std::uint64_t m_rank = 0;
};

/// What a line tells of an answer, and the weight of that line; 0 when it does not tell.
struct Told {
    Standing standing;
    TextId text = 0;
};

/// One answer of a model, put together from all lines that tell of it.
struct UsageRecord {
    Usage usage;
    Standing standing; // of the line that dates the answer
    Told session;
    Told model;
    Told folder; // the working directory
    TextId request = 0;
    Speed speed = Speed::Standard;
    ServiceTier tier = ServiceTier::Standard;
    Ending ending = Ending::Untold;
    bool isSidechain = false;
    Provider provider = Provider::Claude;
    bool isSum = false; // of several requests, it may be

    [[nodiscard]] TimePoint time() const { return standing.time(); }
    /// A subagent's answer whose last line was never written: its output is known too low.
    [[nodiscard]] bool isIncomplete() const { return isSidechain && ending == Ending::Open; }
};

} // namespace indexer
