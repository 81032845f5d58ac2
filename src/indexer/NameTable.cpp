#include "indexer/NameTable.h"

#include <fmt/format.h>
#include <string>

namespace indexer {

namespace {

/// So many numbers without a text are borne, beside several for each text that is there: more are
/// no loss but nonsense, and would take the memory.
constexpr std::int64_t mostLost = 1000;
constexpr std::int64_t lostForEach = 4;

/// Takes up a text by the next number, by another name if it has one already.
void addNext(TextPool &names, std::string_view text)
{
    const std::size_t number = names.size();
    if (names.add(text) == number) {
        return;
    }
    std::string name = fmt::format("lost-{}", number);
    while (names.add(name) != number) {
        name += '\'';
    }
}

} // namespace

NameTable::NameTable(Database &database)
    : m_database(database)
{
    const std::int64_t most = mostLost + lostForEach * database.number("SELECT count(*) FROM text");
    Statement rows(database, "SELECT id, text FROM text ORDER BY id");
    while (rows.next()) {
        const std::int64_t id = rows.number(0);
        if (id < static_cast<std::int64_t>(m_names.size()) || id > most) {
            database.setDamaged();
            break;
        }
        while (static_cast<std::int64_t>(m_names.size()) < id) {
            addNext(m_names, {});
        }
        addNext(m_names, rows.bytes(1));
    }
    m_saved = m_names.size();
}

void NameTable::save()
{
    if (m_saved == m_names.size()) {
        return;
    }
    Statement insertion(m_database, "INSERT INTO text (id, text) VALUES (?, ?)");
    for (; m_saved < m_names.size(); ++m_saved) {
        insertion.bind(m_saved, m_names.text(static_cast<TextId>(m_saved))).run();
    }
}

} // namespace indexer
