#include "indexer/AnswerTable.h"

#include <algorithm>

namespace indexer {

AnswerTable::AnswerTable(Database &database, const TextPool &names)
    : m_database(database)
    , m_names(names)
    , m_ofMessage(database, "SELECT request, file, told FROM answer WHERE message = ?")
    , m_one(database, "SELECT told FROM answer WHERE message = ? AND request = ? AND file = ?")
    , m_insertion(database,
          "INSERT OR IGNORE INTO answer (message, request, file, told) VALUES (?, ?, ?, ?)")
    , m_update(
          database, "UPDATE answer SET told = ? WHERE message = ? AND request = ? AND file = ?")
{
}

void AnswerTable::visitAll(const Visit &visit)
{
    Statement rows(m_database, "SELECT message, request, file, told FROM answer ORDER BY message");
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
    visitGroup(m_group, visit);
}

std::uint64_t AnswerTable::seal(const Place &place)
{
    return sealPlace(
        {place.key.message, place.key.request, static_cast<std::uint64_t>(place.file)});
}

void AnswerTable::addToGroup(AnswerKey key, const Statement &row, int column)
{
    if (const auto record =
            unpackUsageRecord(row.bytes(column + 1), seal({key, row.number(column)}))) {
        m_group.push_back({key.request, *record});
    } else {
        m_database.setDamaged();
    }
}

void AnswerTable::visitGroup(std::vector<Told> &group, const Visit &visit) const
{
    if (group.size() > 1) {
        std::ranges::stable_sort(group, {}, &Told::request);
        std::size_t last = 0;
        for (std::size_t i = 1; i < group.size(); ++i) {
            if (group[i].request == group[last].request) {
                merge(group[last].record, group[i].record, m_names);
            } else {
                group[++last] = group[i];
            }
        }
        group.resize(last + 1);
        if (group.size() > 1 && group.front().request == 0) {
            merge(group[1].record, group.front().record, m_names);
            group.erase(group.begin());
        }
    }
    for (const Told &told : group) {
        visit(told.record);
    }
}

std::vector<AnswerTable::Place> AnswerTable::placesOf(const std::set<std::int64_t> &files)
{
    std::vector<Place> places;
    Statement rows(m_database, "SELECT message, request, file FROM answer");
    while (rows.next()) {
        if (files.contains(rows.number(2))) {
            places.push_back({{rows.bits(0), rows.bits(1)}, rows.number(2)});
        }
    }
    return places;
}

/// In the order of the table, new rows go to its pages one after another.
void AnswerTable::put(std::span<const Row> rows)
{
    PackedWriter writer;
    for (const Row &row : rows) {
        writer.clear();
        pack(writer, row.answer.record, seal({row.answer.key, row.file}));
        m_insertion.bind(row.answer.key.message, row.answer.key.request, row.file,
            std::string_view(writer.bytes()));
        m_insertion.run();
        if (m_database.changes() == 0) {
            mergeInto(row);
        }
    }
}

void AnswerTable::mergeInto(const Row &row)
{
    const AnswerKey key = row.answer.key;
    UsageRecord record = row.answer.record;
    m_one.bind(key.message, key.request, row.file);
    while (m_one.next()) {
        if (const auto before = unpackUsageRecord(m_one.bytes(0), seal({key, row.file}))) {
            merge(record, *before, m_names);
        } else {
            m_database.setDamaged();
        }
    }
    PackedWriter writer;
    pack(writer, record, seal({key, row.file}));
    m_update.bind(std::string_view(writer.bytes()), key.message, key.request, row.file).run();
}

void AnswerTable::remove(std::span<const Place> places)
{
    Statement removal(
        m_database, "DELETE FROM answer WHERE message = ? AND request = ? AND file = ?");
    for (const auto &[key, file] : places) {
        removal.bind(key.message, key.request, file).run();
    }
}

} // namespace indexer
