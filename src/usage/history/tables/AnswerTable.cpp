#include "usage/history/tables/AnswerTable.h"

#include <algorithm>

namespace usage {

namespace {

/// Of a row that begins with its key; nothing when it is not as it was written.
std::optional<Answer> recordIn(const Statement &row)
{
    return unpackAnswer(row.bytes(3), AnswerTable::seal({row.bits(0), row.bits(1)}, row.number(2)));
}

} // namespace

AnswerTable::AnswerTable(Database &database, const TextPool &names)
    : m_database(database)
    , m_names(names)
    , m_ofMessage(database, "SELECT request, rules, told FROM answer WHERE message = ?")
    , m_before(database,
          "SELECT message, request, rules, told FROM answer WHERE message < ?"
          " ORDER BY message DESC LIMIT 1")
    , m_behind(database,
          "SELECT message, request, rules, told FROM answer WHERE message > ?"
          " ORDER BY message LIMIT 1")
    , m_one(database, "SELECT rules, told FROM answer WHERE message = ? AND request = ?")
    , m_insertion(database,
          "INSERT OR IGNORE INTO answer (message, request, rules, told) VALUES (?, ?, ?, ?)")
    , m_update(database, "UPDATE answer SET rules = ?, told = ? WHERE message = ? AND request = ?")
{
}

bool AnswerTable::isSound(Database &database)
{
    Statement rows(database, "SELECT message, request, rules, told FROM answer");
    while (rows.next()) {
        if (!recordIn(rows)) {
            return false;
        }
    }
    return true;
}

void AnswerTable::visitAll(const Visit &visit)
{
    Statement rows(m_database, "SELECT message, request, rules, told FROM answer ORDER BY message");
    m_group.clear();
    std::uint64_t message = 0;
    while (rows.next()) {
        if (rows.bits(0) != message) {
            visitGroup(m_group, visit);
            m_group.clear();
            message = rows.bits(0);
        }
        addToGroup({message, rows.bits(1)}, rows, 2);
    }
    visitGroup(m_group, visit);
}

void AnswerTable::visit(std::uint64_t message, const Visit &visit)
{
    m_group.clear();
    m_ofMessage.bind(message);
    while (m_ofMessage.next()) {
        addToGroup({message, m_ofMessage.bits(0)}, m_ofMessage, 1);
    }
    if (m_group.empty()) {
        checkAround(message);
    }
    visitGroup(m_group, visit);
}

/// A key that is damaged leads astray whoever looks for what stood there: who finds nothing has
/// ended beside it.
void AnswerTable::checkAround(std::uint64_t message)
{
    for (Statement *const beside : {&m_before, &m_behind}) {
        beside->bind(message);
        while (beside->next()) {
            if (!recordIn(*beside)) {
                m_database.setDamaged();
            }
        }
    }
}

void AnswerTable::addToGroup(AnswerKey key, const Statement &row, int column)
{
    if (const auto record = unpackAnswer(row.bytes(column + 1), seal(key, row.number(column)))) {
        m_group.push_back({key.request, *record});
    } else {
        m_database.setDamaged();
    }
}

/// In the order of the requests, by their hashes as they are.
void AnswerTable::visitGroup(std::vector<Row> &group, const Visit &visit) const
{
    if (group.size() > 1) {
        std::ranges::sort(group, {}, &Row::request);
        if (group.front().request == 0) {
            merge(group[1].record, group.front().record, m_names);
            group.erase(group.begin());
        }
    }
    for (const Row &row : group) {
        visit(row.record);
    }
}

/// In the order of the table, new rows go to its pages one after another.
void AnswerTable::put(std::span<const FileAnswer> answers, std::int64_t rules)
{
    PackedWriter writer;
    for (const FileAnswer &answer : answers) {
        writer.clear();
        pack(writer, answer.record, seal(answer.key, rules));
        m_insertion.bind(
            answer.key.message, answer.key.request, rules, std::string_view(writer.bytes()));
        m_insertion.run();
        if (m_database.changes() == 0) {
            mergeInto(answer, rules);
        }
    }
}

void AnswerTable::mergeInto(const FileAnswer &answer, std::int64_t rules)
{
    const AnswerKey key = answer.key;
    Answer record = answer.record;
    std::string before;
    m_one.bind(key.message, key.request);
    while (m_one.next()) {
        const std::int64_t rulesBefore = m_one.number(0);
        before = m_one.bytes(1);
        const auto told = unpackAnswer(before, seal(key, rulesBefore));
        if (!told) {
            m_database.setDamaged();
        } else if (rulesBefore == rules) {
            merge(record, *told, m_names);
        } else if (rulesBefore > rules) {
            record = *told;
            rules = rulesBefore;
        }
    }
    PackedWriter writer;
    pack(writer, record, seal(key, rules));
    if (writer.bytes() != before) {
        m_update.bind(rules, std::string_view(writer.bytes()), key.message, key.request).run();
    }
}

} // namespace usage
