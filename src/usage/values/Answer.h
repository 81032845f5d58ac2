#pragma once

#include "formats/TimeStamp.h"
#include "usage/values/Packed.h"
#include "usage/values/Provider.h"
#include "usage/values/TextPool.h"
#include "usage/values/Usage.h"

#include <optional>

namespace usage {

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

    [[nodiscard]] static Standing ofRank(std::uint64_t rank)
    {
        Standing standing;
        standing.m_rank = rank;
        return standing;
    }

    [[nodiscard]] auto operator<=>(const Standing &) const = default;
    [[nodiscard]] std::uint64_t rank() const { return m_rank; } // for the history
    [[nodiscard]] bool isForked() const { return (m_rank & forkedBit) != 0; }
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
struct Answer {
    Usage usage;
    Standing standing; // of the line that dates the answer
    Told session;
    Told model;
    Told folder; // the working directory
    Speed speed = Speed::Standard;
    ServiceTier tier = ServiceTier::Standard;
    Ending ending = Ending::Untold;
    bool isSidechain = false;
    Provider provider = Provider::Claude;
    bool isSum = false;     // of several requests, it may be
    bool isPartial = false; // more was used than is told

    [[nodiscard]] TimePoint time() const { return standing.time(); }
    /// Also a subagent's answer whose last line was never written: its output is known too low.
    [[nodiscard]] bool isIncomplete() const
    {
        return isPartial || (isSidechain && ending == Ending::Open);
    }
};

/// Puts together what two files, or two lines, tell of one answer; which comes first does not
/// matter. The texts are those of `names`.
void merge(Answer &record, const Answer &other, const TextPool &names);

/// For the history, which keeps all but the folder of Claude's answers, sealed to their place.
void pack(PackedWriter &writer, const Answer &record, std::uint64_t place);
/// Nothing for bytes that were not packed for this place, or that tell what cannot be.
[[nodiscard]] std::optional<Answer> unpackAnswer(std::string_view bytes, std::uint64_t place);

} // namespace usage
