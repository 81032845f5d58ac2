#pragma once

#include "indexer/TranscriptLine.h"
#include "indexer/TranscriptPiece.h"

#include <string>
#include <unordered_map>

namespace indexer {

/// Before this there was nothing to count.
constexpr TimePoint earliestTime =
    std::chrono::sys_days {std::chrono::year {2000} / std::chrono::January / 1};
/// Clocks differ, and so do zones; what lies further ahead is a mistake.
constexpr std::chrono::days timeTolerance {2};

/// When a line was written. Nothing for a line that tells no time, or one that cannot be; that goes
/// into the skips. `again` is when one that lies ahead of `now` would count.
[[nodiscard]] std::optional<TimePoint> timeOf(
    std::string_view timestamp, TimePoint now, Skips &skips, std::optional<TimePoint> &again);

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

} // namespace indexer
