#pragma once

#include "usage/claude/TranscriptPiece.h"

#include <map>
#include <utility>

/// What one transcript tells, put together from its pieces as the history does.
class TranscriptBook final {
public:
    void add(const usage::TranscriptPiece &piece);

    /// All of it, the same for the same facts.
    [[nodiscard]] std::string bytes() const;

private:
    usage::TextPool m_names;
    std::map<usage::AnswerKey, usage::Answer> m_answers;
    std::map<std::string, usage::SessionFacts> m_sessions;
    std::map<std::uint64_t, std::string> m_summaries;
};
