#include "indexer/Salvage.h"

#include "indexer/UsageRecord.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <vector>

namespace indexer {

namespace {

/// A table, its columns, and how many of these, from the first on, tell its rows apart.
struct Table {
    std::string_view name;
    std::vector<std::string_view> columns;
    std::size_t keys = 1;
};

/// Those that all others can be made of.
const std::array<Table, 8> &tables()
{
    static const std::array<Table, 8> all {{
        {"text", {"id", "text"}},
        {"file",
            {"id", "provider", "path", "device", "inode", "size", "modified", "place", "guard",
                "again", "gone", "rules", "skips"}},
        {"answer", {"message", "request", "file", "told"}, 3},
        {"session_part", {"session", "file", "told"}, 2},
        {"summary", {"leaf", "file", "title"}, 2},
        {"rollout", {"file", "told"}},
        {"kin", {"thread", "file"}, 2},
        {"thread_name", {"thread", "name"}},
    }};
    return all;
}

/// Copies rows in the order of their keys until there are no more, or none that can be read.
void copy(Database &from, Database &to, const Table &table, std::string_view direction)
{
    const std::string columns = fmt::format("{}", fmt::join(table.columns, ", "));
    std::string order;
    for (std::size_t i = 0; i < table.keys; ++i) {
        order += fmt::format("{}{} {}", i == 0 ? "" : ", ", table.columns[i], direction);
    }
    Statement rows(from, fmt::format("SELECT {} FROM {} ORDER BY {}", columns, table.name, order));
    Statement insertion(to,
        fmt::format("INSERT OR IGNORE INTO {} ({}) VALUES ({})", table.name, columns,
            fmt::join(std::vector<std::string_view>(table.columns.size(), "?"), ", ")));
    while (rows.next()) {
        insertion.bindRow(rows, static_cast<int>(table.columns.size()));
        insertion.run();
    }
}

/// Rows name texts by numbers without gaps; what was lost must not make others move up.
void fillGaps(Database &history)
{
    std::int64_t last = std::max(history.number("SELECT max(id) FROM text"),
        history.number("SELECT max(session) FROM session_part"));
    Statement answers(history, "SELECT told FROM answer");
    while (answers.next()) {
        const UsageRecord record = unpackUsageRecord(answers.bytes(0));
        last = std::max<std::int64_t>(last, std::max(record.session.text, record.model.text));
    }
    Statement insertion(history, "INSERT OR IGNORE INTO text (id, text) VALUES (?, ?)");
    for (std::int64_t id = 1; id <= last; ++id) {
        const std::string standIn = fmt::format("lost-{}", id);
        insertion.bind(id, std::string_view(standIn)).run();
    }
}

} // namespace

void salvage(const std::filesystem::path &damaged, Database &history)
{
    Transaction transaction(history);
    for (const Table &table : tables()) {
        // From both ends, each time as if nothing had happened: what cannot be read lies between.
        for (const std::string_view direction : {"ASC", "DESC"}) {
            Database source(damaged);
            // Has SQLite look into files that are shorter than they say.
            source.run("PRAGMA writable_schema = ON");
            copy(source, history, table, direction);
        }
    }
    fillGaps(history);
    transaction.commit();
}

} // namespace indexer
