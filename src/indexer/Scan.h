#pragma once

#include "indexer/Ledger.h"
#include "indexer/LineParser.h"
#include "indexer/LineReader.h"
#include "indexer/RolloutParser.h"
#include "indexer/RolloutReader.h"
#include "indexer/SessionBook.h"
#include "indexer/Skips.h"

#include <filesystem>

namespace indexer {

/// Reads transcripts into a ledger and rollouts into a book. The order of the files does not
/// matter.
class Scan final {
public:
    /// Times more than two days behind `now` are taken for mistakes.
    explicit Scan(TimePoint now);

    [[nodiscard]] const Ledger &ledger() const { return m_ledger; }
    [[nodiscard]] const RolloutBook &rollouts() const { return m_rollouts; }
    [[nodiscard]] const SessionBook &sessions() const { return m_sessions; }
    [[nodiscard]] const TextPool &names() const { return m_names; }
    [[nodiscard]] const Skips &skips() const { return m_skips; }
    [[nodiscard]] std::size_t files() const { return m_files; }

    /// Reads all transcripts in Claude Code's folder; there need not be any.
    void addClaude(const std::filesystem::path &folder);
    /// Reads all rollouts in Codex's folder; there need not be any.
    void addCodex(const std::filesystem::path &folder);
    void addFile(const std::filesystem::path &file);

private:
    template <typename Parser, typename Line, typename Take>
    void readFile(const std::filesystem::path &file, Parser &parser, Line &line, Take take);
    [[nodiscard]] std::optional<TimePoint> timeOf(std::string_view timestamp);
    void addRollout(const std::filesystem::path &file);
    void addLine(const TranscriptLine &line, std::string_view file);
    void addUsage(const TranscriptLine &line, TimePoint time);

    TextPool m_names;
    Ledger m_ledger {m_names};
    SessionBook m_sessions {m_names};
    Skips m_skips;
    LineReader m_reader;
    JsonLine m_json;
    LineParser m_parser {m_json};
    RolloutBook m_rollouts {m_names};
    RolloutParser m_rolloutParser {m_json};
    RolloutReader m_rolloutReader {m_rollouts, m_names};
    TimePoint m_latest;
    std::size_t m_files = 0;
};

} // namespace indexer
