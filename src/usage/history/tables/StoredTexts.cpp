#include "usage/history/tables/StoredTexts.h"

#include "usage/history/tables/SealedTables.h"

#include <fmt/format.h>

namespace usage {

StoredTexts::StoredTexts(Database &database)
    : m_database(database)
{
    checkStructure(database, textTable.name);
    Statement rows(
        database, fmt::format("SELECT id, text, {} FROM text ORDER BY id", isSealed(textTable)));
    while (rows.next()) {
        const std::int64_t id = rows.number(0);
        const bool isNext = id == static_cast<std::int64_t>(m_names.size()) && rows.number(2) != 0;
        if (!isNext || m_names.add(rows.bytes(1)) != id) {
            database.setDamaged();
        }
    }
    m_saved = m_names.size();
}

void StoredTexts::save()
{
    if (m_saved == m_names.size()) {
        return;
    }
    Statement insertion(m_database, replacementIn(textTable));
    for (; m_saved < m_names.size(); ++m_saved) {
        insertion.bind(m_saved, m_names.text(static_cast<TextId>(m_saved))).run();
    }
}

} // namespace usage
