#pragma once

#include "indexer/Ledger.h"
#include "indexer/LineParser.h"
#include "indexer/LineReader.h"
#include "indexer/SessionBook.h"
#include "indexer/Skips.h"

#include <filesystem>

namespace indexer {

/// Reads transcripts into a ledger. The order of the files does not matter.
class Scan final {
public:
    /// Times more than two days behind `now` are taken for mistakes.
    explicit Scan(TimePoint now);

    [[nodiscard]] const Ledger &ledger() const { return m_ledger; }
    [[nodiscard]] const SessionBook &sessions() const { return m_sessions; }
    [[nodiscard]] const TextPool &names() const { return m_names; }
    [[nodiscard]] const Skips &skips() const { return m_skips; }
    [[nodiscard]] std::size_t files() const { return m_files; }

    /// Reads all transcripts in Claude Code's folder; there need not be any.
    void addClaude(const std::filesystem::path &folder);
    void addFile(const std::filesystem::path &file);

private:
    void addLine(const TranscriptLine &line, std::string_view file);
    void addUsage(const TranscriptLine &line, TimePoint time);

    TextPool m_names;
    Ledger m_ledger {m_names};
    SessionBook m_sessions {m_names};
    Skips m_skips;
    LineReader m_reader;
    LineParser m_parser;
    TimePoint m_latest;
    std::size_t m_files = 0;
};

} // namespace indexer
