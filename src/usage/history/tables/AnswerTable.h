#pragma once

#include "usage/claude/TranscriptPiece.h"
#include "usage/history/tables/Database.h"

#include <functional>
#include <span>
#include <vector>

namespace usage {

/// To be raised when lines are read by other rules: then all files are read again.
constexpr std::int64_t readingRules = 3;

/// What all lines together tell of each answer, whichever files they stood in. A line that is no
/// longer there takes nothing back.
class AnswerTable final {
public:
    using Visit = std::function<void(const Answer &)>;

    AnswerTable(Database &database, const TextPool &names);

    /// What seals a row; `rules` are those that its lines were read by.
    [[nodiscard]] static std::uint64_t seal(AnswerKey key, std::int64_t rules)
    {
        return sealPlace({key.message, key.request, static_cast<std::uint64_t>(rules)});
    }
    /// Whether all rows are as they were written.
    [[nodiscard]] static bool isSound(Database &database);

    /// Each answer once. A line without request id belongs to the answer of its message id; where
    /// that has several requests, to the first of them by its hash.
    void visitAll(const Visit &visit);
    /// Those of one message id.
    void visit(std::uint64_t message, const Visit &visit);

    /// Adds what lines tell, whose texts are those of the history, to what others told before. What
    /// was read by older rules is replaced whole, since it may have been too much.
    void put(std::span<const FileAnswer> answers, std::int64_t rules = readingRules);

private:
    struct Row {
        std::uint64_t request = 0;
        Answer record;
    };

    /// Takes up a row that ends with the rules and what it tells, from a column on.
    void addToGroup(AnswerKey key, const Statement &row, int column);
    void visitGroup(std::vector<Row> &group, const Visit &visit) const;
    void mergeInto(const FileAnswer &answer, std::int64_t rules);
    void checkAround(std::uint64_t message);

    Database &m_database;
    const TextPool &m_names;
    Statement m_ofMessage;
    Statement m_before;
    Statement m_behind;
    Statement m_one;
    Statement m_insertion;
    Statement m_update;
    std::vector<Row> m_group; // reused
};

} // namespace usage
