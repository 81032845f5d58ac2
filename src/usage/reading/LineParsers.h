#pragma once

#include "usage/claude/TranscriptParser.h"
#include "usage/codex/RolloutParser.h"
#include "usage/lines/JsonLine.h"
#include "usage/lines/LineReader.h"

#include <mutex>
#include <optional>

namespace usage {

/// Parsers of both assistants' lines, for one thread.
struct LineParsers {
    explicit LineParsers(std::size_t usualLine)
        : json(usualLine)
    {
    }

    JsonLine json;
    TranscriptParser transcript {json};
    RolloutParser rollout {json};

    [[nodiscard]] LineOutcome parse(std::string_view line, TranscriptLine &result)
    {
        return transcript.parse(line, result);
    }
    [[nodiscard]] LineOutcome parse(std::string_view line, RolloutLine &result)
    {
        return rollout.parse(line, result);
    }
};

/// The parsers of long lines. Their index takes four times the line's size, so that there is one
/// for all threads, and what they found is to be used before the lock is given up.
struct LongLineParsers {
    static constexpr std::size_t beyond = std::size_t {1} << 20U;

    std::mutex lock;
    std::optional<LineParsers> parsers; // made for the first long line
};

} // namespace usage
