#include "usage/history/tables/NoteTable.h"

#include "usage/history/tables/SealedTables.h"

#include <charconv>
#include <fmt/format.h>

namespace usage {

std::int64_t NoteTable::number(std::string_view name) const
{
    const std::string digits = text(name);
    std::int64_t value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

std::string NoteTable::text(std::string_view name) const
{
    Statement rows(m_database,
        fmt::format(
            "SELECT value, {} FROM fact WHERE name = CAST(? AS TEXT)", isSealed(factTable)));
    rows.bind(name);
    std::string value;
    while (rows.next()) {
        value = rows.bytes(0);
        if (rows.number(1) == 0) {
            m_database.setDamaged();
        }
    }
    return value;
}

void NoteTable::set(std::string_view name, std::int64_t value)
{
    set(name, std::string_view(std::to_string(value)));
}

void NoteTable::set(std::string_view name, std::string_view value)
{
    Statement replacement(m_database,
        "INSERT OR REPLACE INTO fact (name, value, seal)"
        " VALUES (CAST(?1 AS TEXT), ?2, seal(?1, ?2))");
    replacement.bind(name, value).run();
}

} // namespace usage
