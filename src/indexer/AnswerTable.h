#pragma once

#include "indexer/Database.h"
#include "indexer/TranscriptPiece.h"

#include <functional>
#include <set>
#include <span>
#include <vector>

namespace indexer {

/// What each file tells of each answer, and what that makes of the answers.
class AnswerTable final {
public:
    /// Of one file; its texts are those of the history.
    struct Row {
        std::int64_t file = 0;
        FileAnswer answer;
    };
    /// Where a row stands.
    struct Place {
        AnswerKey key;
        std::int64_t file = 0;
    };
    using Visit = std::function<void(const UsageRecord &)>;

    AnswerTable(Database &database, const TextPool &names);

    /// What seals what a row tells.
    [[nodiscard]] static std::uint64_t seal(const Place &place);

    /// Each answer once. A line without request id belongs to the answer of its message id; where
    /// that has several requests, to the first of them by its hash.
    void visitAll(const Visit &visit);
    /// Those of one message id.
    void visit(std::uint64_t message, const Visit &visit);
    /// The rows of some files. Looks at all rows there are.
    [[nodiscard]] std::vector<Place> placesOf(const std::set<std::int64_t> &files);

    /// Adds rows to what the same files told before.
    void put(std::span<const Row> rows);
    void remove(std::span<const Place> places);

private:
    struct Told {
        std::uint64_t request = 0;
        UsageRecord record;
    };

    /// Takes up a row that ends with file and what it tells, from a column on.
    void addToGroup(AnswerKey key, const Statement &row, int column);
    void visitGroup(std::vector<Told> &group, const Visit &visit) const;
    void mergeInto(const Row &row);

    Database &m_database;
    const TextPool &m_names;
    Statement m_ofMessage;
    Statement m_one;
    Statement m_insertion;
    Statement m_update;
    std::vector<Told> m_group; // reused
};

} // namespace indexer
