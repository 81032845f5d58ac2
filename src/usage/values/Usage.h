#pragma once

#include <algorithm>
#include <cstdint>

namespace usage {

/// The token counts of one answer of a model, as its lines state them.
struct Usage {
    std::uint64_t input = 0;  // fresh, without any cache
    std::uint64_t output = 0; // thinking included
    std::uint64_t cacheRead = 0;
    std::uint64_t cacheCreation = 0; // all cache writes
    std::uint64_t fiveMinutes = 0;   // of these, those kept for five minutes
    std::uint64_t oneHour = 0;       // and for an hour

    [[nodiscard]] bool operator==(const Usage &) const = default;

    /// Cache writes that no lifetime is told for live for five minutes.
    [[nodiscard]] std::uint64_t shortWrites() const
    {
        return std::max(cacheCreation, fiveMinutes + oneHour) - oneHour;
    }
    [[nodiscard]] std::uint64_t cacheWrite() const { return shortWrites() + oneHour; }
    /// All that was sent to the model.
    [[nodiscard]] std::uint64_t prompt() const { return input + cacheRead + cacheWrite(); }

    /// The lines of one answer repeat its counts while they grow: the largest of each is right.
    void raiseTo(const Usage &other)
    {
        input = std::max(input, other.input);
        output = std::max(output, other.output);
        cacheRead = std::max(cacheRead, other.cacheRead);
        cacheCreation = std::max(cacheCreation, other.cacheCreation);
        fiveMinutes = std::max(fiveMinutes, other.fiveMinutes);
        oneHour = std::max(oneHour, other.oneHour);
    }
};

/// How fast an answer was ordered; a later one wins where lines disagree.
enum class Speed : std::uint8_t { Standard, Fast, Other };

/// How an answer was billed; a later one wins where lines disagree.
enum class ServiceTier : std::uint8_t { Standard, Batch, Other };

/// Whether the lines of an answer tell that it was written to its end; a later one wins likewise.
enum class Ending : std::uint8_t { Untold, Open, Finished };

} // namespace usage
