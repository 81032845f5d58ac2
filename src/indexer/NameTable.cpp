#include "indexer/NameTable.h"

namespace indexer {

NameTable::NameTable(Database &database)
    : m_database(database)
{
    Statement rows(database, "SELECT text FROM text ORDER BY id");
    while (rows.next()) {
        m_names.add(rows.bytes(0));
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
