#include "usage/history/tables/SealedTables.h"

#include "usage/history/tables/AnswerTable.h"
#include "usage/history/tables/HistorySchema.h"
#include "usage/history/tables/SessionTable.h"
#include "usage/history/tables/SpentTable.h"

#include <algorithm>
#include <fmt/format.h>

namespace usage {

namespace {

/// Empty for what is sound, else what is wrong. SQLite's own look finds what rows cannot tell:
/// those that are no longer there. `what` is a table, or 1 for all and the first thing that is
/// wrong.
std::string structuralProblem(Database &database, std::string_view what)
{
    Statement rows(database, fmt::format("PRAGMA integrity_check({})", what));
    std::string said;
    while (rows.next() && said.empty()) {
        said = rows.bytes(0);
    }
    return said == "ok" ? std::string() : said;
}

bool hasBrokenSeal(Database &database, const SealedTable &table)
{
    return database.number(fmt::format("SELECT EXISTS (SELECT 1 FROM {} NOT INDEXED WHERE NOT {})",
               table.name, isSealed(table)))
        != 0;
}

/// What is looked through before statistics are made of it; sums and what files tell of sessions
/// are packed with seals.
constexpr std::array small {summaryTable, kinTable, threadNameTable, threadTitleTable, factTable};

bool hasBrokenRow(Database &database)
{
    return std::ranges::any_of(small, [&database](const SealedTable &table) {
        return hasBrokenSeal(database, table);
    }) || !SessionTable::isSound(database);
}

/// Of what can be made anew.
bool hasBrokenSum(Database &database)
{
    return hasBrokenSeal(database, sessionTable) || !SpentTable::isSound(database);
}

} // namespace

std::string isSealed(const SealedTable &table)
{
    return fmt::format("(seal IS seal({}))", table.columns);
}

std::string replacementIn(const SealedTable &table)
{
    std::string values;
    for (auto i = 1; i <= 1 + std::ranges::count(table.columns, ','); ++i) {
        values += fmt::format("{}?{}", i == 1 ? "" : ", ", i);
    }
    return fmt::format("INSERT OR REPLACE INTO {0} ({1}, seal) VALUES ({2}, seal({2}))", table.name,
        table.columns, values);
}

std::string resealing(const SealedTable &table, std::string_view condition)
{
    return fmt::format(
        "UPDATE {} SET seal = seal({}) WHERE {}", table.name, table.columns, condition);
}

void checkStructure(Database &database, std::string_view table)
{
    if (!structuralProblem(database, table).empty()) {
        database.setDamaged();
    }
}

Damage damageOfStatistics(Database &database)
{
    for (const char *table : {"session_part", "spent", "session"}) {
        checkStructure(database, table);
    }
    for (const SealedTable &table : small) {
        checkStructure(database, table.name);
    }
    if (database.problem() || hasBrokenRow(database)) {
        return Damage::Whole;
    }
    return hasBrokenSum(database) ? Damage::Made : Damage::None;
}

DamageFound damageOf(Database &database)
{
    if (std::string problem = structuralProblem(database, "1"); !problem.empty()) {
        return {Damage::Whole, std::move(problem)};
    }
    if (!isSchemaUpToDate(database)) {
        return {};
    }
    for (const SealedTable &table : {textTable, fileTable, rolloutTable}) {
        if (hasBrokenSeal(database, table)) {
            return {
                Damage::Whole, fmt::format("rows of {} are not as they were written", table.name)};
        }
    }
    if (database.number("SELECT count(*) <> coalesce(max(id), 0) FROM text") != 0) {
        return {Damage::Whole, "rows of text are missing"};
    }
    if (hasBrokenRow(database) || !AnswerTable::isSound(database)) {
        return {Damage::Whole, "rows are not as they were written"};
    }
    if (hasBrokenSum(database)) {
        return {Damage::Made, "sums are not as they were written"};
    }
    return {};
}

} // namespace usage
