#pragma once

#include "usage/history/CodexWriter.h"
#include "usage/history/ReadPlan.h"
#include "usage/history/RolloutVersions.h"
#include "usage/history/tables/AnswerTable.h"
#include "usage/history/tables/FileTable.h"
#include "usage/history/tables/NoteTable.h"
#include "usage/history/tables/SessionTable.h"
#include "usage/history/tables/SpentTable.h"
#include "usage/history/tables/StoredTexts.h"

#include <map>
#include <set>
#include <vector>

namespace usage {

/// How the sums follow when pieces are stored.
enum class SumUpkeep {
    WithEachBatch, // best for few pieces
    AtTheEnd       // best for many
};

/// Puts what was read into the history, many pieces in one transaction.
class HistoryWriter final {
public:
    HistoryWriter(
        Database &database, const PriceTable &prices, const ReadPlan &plan, TimePoint now);

    /// Takes a piece, whose file is the number of one in the plan; false after a failure.
    bool add(FilePiece &&piece, SumUpkeep upkeep);
    /// Stores what is waiting.
    void flush(SumUpkeep upkeep);
    /// Makes all sums anew from what was stored. `version` tells what they are made by.
    void rebuildSums(const std::string &version);

private:
    void resolve(FilePiece &piece);
    void resolveVersions(const FilePiece &piece, const PlannedFile &planned, std::int64_t &id);
    void collect(FilePiece &piece);
    void collect(std::int64_t file, TranscriptPiece &told);
    void collect(std::int64_t file, TextId session, SessionFacts facts);
    void store(SumUpkeep upkeep);
    void showSessions();
    [[nodiscard]] std::vector<std::uint64_t> touchedMessages() const;

    Database &m_database;
    const ReadPlan &m_plan;
    std::vector<std::int64_t> m_ids; // of the plan's files, 0 for those without one yet
    NoteTable m_facts;
    FileTable m_files;
    StoredTexts m_nameTable;
    AnswerTable m_answers;
    SessionTable m_sessions;
    CodexWriter m_families;
    RolloutVersions m_versions;
    SpentTable m_sumTable;
    Sums m_sums;

    /// Of files that are read from their start once more, the sessions that they told of by now.
    std::map<std::int64_t, std::set<TextId>> m_retold;

    // What waits to be stored.
    std::vector<FilePiece> m_pieces;
    std::size_t m_waiting = 0; // rows in them
    // While it is being stored.
    std::vector<FileAnswer> m_answersTold;
    CodexWriter::Rollouts m_rollouts;        // of the pieces
    std::vector<std::int64_t> m_superfluous; // files
    std::set<TextId> m_touchedSessions;
    bool m_hasNewSummaries = false;
};

} // namespace usage
