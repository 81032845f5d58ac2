#pragma once

#include "usage/claude/SessionFacts.h"
#include "usage/values/Answer.h"
#include "usage/values/Skips.h"

#include <map>
#include <optional>
#include <vector>

namespace usage {

/// An answer under which the lines that tell of it are put together: the hashes of its message id
/// (or what stands in for it) and of its request id, which is 0 where the lines have none.
struct AnswerKey {
    std::uint64_t message = 0;
    std::uint64_t request = 0;

    [[nodiscard]] auto operator<=>(const AnswerKey &) const = default;
};

/// What one file tells of an answer.
struct FileAnswer {
    AnswerKey key;
    Answer record;
};

/// What a stretch of one of Claude Code's transcripts tells. Its texts are numbered on their own.
struct TranscriptPiece {
    TextPool names;
    std::vector<FileAnswer> answers; // each once
    std::map<TextId, SessionFacts> sessions;
    std::map<std::uint64_t, std::string> summaries; // by the hash of the line they end with
    Skips skips;
    /// From when on a line would count whose time lies too far ahead now.
    std::optional<TimePoint> again;
};

} // namespace usage
