#pragma once

#include "usage/claude/TranscriptLine.h"
#include "usage/claude/TranscriptPiece.h"

#include <string>
#include <unordered_map>

namespace usage {

/// Puts the lines of a transcript together.
class TranscriptReader final {
public:
    TranscriptReader(TranscriptPiece &piece, TimePoint now);

    void add(const TranscriptLine &line);

private:
    void addUsage(const TranscriptLine &line, TimePoint time);
    void addConversation(const TranscriptLine &line, TimePoint time);
    void addTitle(const TranscriptLine &line);
    [[nodiscard]] SessionFacts *sessionOf(const TranscriptLine &line);
    [[nodiscard]] std::optional<AnswerKey> keyOf(const TranscriptLine &line);

    TranscriptPiece &m_piece;
    TimePoint m_now;
    std::unordered_map<std::uint64_t, std::uint32_t> m_places; // of the answers, by both hashes
    std::string m_text;                                        // reused
    std::string m_sessionId;                                   // of the line before
    SessionFacts *m_session = nullptr;
};

} // namespace usage
