#include "usage/history/Salvage.h"

#include "usage/codex/RolloutPacking.h"
#include "usage/history/tables/AnswerTable.h"
#include "usage/history/tables/RolloutTable.h"
#include "usage/history/tables/SealedTables.h"
#include "usage/history/tables/SessionTable.h"
#include "usage/history/tables/StoredTexts.h"

#include <fmt/format.h>
#include <functional>
#include <limits>
#include <optional>
#include <unordered_map>

namespace usage {

namespace {

/// After so many places that cannot be read, the rest is given up.
constexpr int mostHoles = 4000;

bool hasColumn(Database &database, std::string_view table, std::string_view column)
{
    database.goOn();
    return database.number(fmt::format(
               "SELECT count(*) FROM pragma_table_info('{}') WHERE name = '{}'", table, column))
        != 0;
}

/// Reads what can be read of a table.
class Remains final {
public:
    using Take = std::function<void(const Statement &)>;

    /// `columns` begins with a key, which is a number. Rows that a condition does not hold for are
    /// left out.
    Remains(Database &from, std::string_view table, std::string_view columns,
        std::string_view condition = "true")
        : m_from(from)
        , m_sql(fmt::format("SELECT {0} FROM {1} WHERE {2} >= ? AND {3} ORDER BY {2}", columns,
              table, columns.substr(0, columns.find(',')), condition))
    {
    }
    /// The rows of a table that are as they were written, as far as its version tells.
    Remains(Database &from, const SealedTable &table)
        : Remains(from, table.name, table.columns,
            hasColumn(from, table.name, "seal") ? isSealed(table) : "true")
    {
    }

    /// Gives the rows in the order of their key, and goes on behind what cannot be read.
    void visit(const Take &take)
    {
        std::optional<std::int64_t> from = std::numeric_limits<std::int64_t>::min();
        for (int holes = 0; from && holes < mostHoles; ++holes) {
            from = visitFrom(*from, take);
        }
    }

private:
    [[nodiscard]] std::optional<std::int64_t> visitFrom(std::int64_t from, const Take &take);
    [[nodiscard]] std::optional<std::int64_t> placeBehind(std::int64_t hole);
    [[nodiscard]] bool canReadFrom(std::int64_t key);

    Database &m_from;
    std::string m_sql;
};

/// The key to go on from after what cannot be read, if that was met.
std::optional<std::int64_t> Remains::visitFrom(std::int64_t from, const Take &take)
{
    m_from.goOn();
    Statement rows(m_from, m_sql);
    rows.bind(from);
    std::int64_t last = from;
    while (rows.next()) {
        if (rows.number(0) < last) {
            m_from.setDamaged(); // pages in disorder could lead in circles
            break;
        }
        last = rows.number(0);
        take(rows);
    }
    return m_from.isDamaged() ? placeBehind(last) : std::nullopt;
}

/// Ever longer steps, and back to the first key that can be read.
std::optional<std::int64_t> Remains::placeBehind(std::int64_t hole)
{
    constexpr std::uint64_t half = std::uint64_t {1} << 63U;
    constexpr std::uint64_t end = std::numeric_limits<std::uint64_t>::max();
    const auto keyOf = [](std::uint64_t place) { return static_cast<std::int64_t>(place ^ half); };
    std::uint64_t below = static_cast<std::uint64_t>(hole) ^ half;
    std::uint64_t above = below;
    for (std::uint64_t step = 1; above == below || !canReadFrom(keyOf(above)); step *= 2) {
        if (above == end || step == 0) {
            return std::nullopt;
        }
        below = above;
        above = end - above < step ? end : above + step;
    }
    while (above - below > 1) {
        const std::uint64_t middle = below + (above - below) / 2;
        (canReadFrom(keyOf(middle)) ? above : below) = middle;
    }
    return keyOf(above);
}

bool Remains::canReadFrom(std::int64_t key)
{
    m_from.goOn();
    Statement row(m_from, m_sql + " LIMIT 1");
    row.bind(key).run();
    return !m_from.problem();
}

/// Puts what is sound into a new history, under new numbers for its texts.
class Salvaging final {
public:
    Salvaging(Database &from, Database &to)
        : m_from(from)
        , m_to(to)
        , m_nameTable(to)
        , m_answers(to, m_nameTable.names())
        , m_sessions(to, m_nameTable.names())
        , m_rollouts(to)
    {
    }

    void run();

private:
    void readTexts();
    void copyFiles();
    void copySummaries();
    void copyThreads(const SealedTable &table);
    void takeAnswer(const Statement &row, bool isByFile);
    void takeSession(const Statement &row);
    void takeRollout(const Statement &row);
    void standInForFiles();
    [[nodiscard]] bool isKnown(TextId before) const
    {
        return before == 0 || m_texts.contains(before);
    }
    [[nodiscard]] TextId numberOf(TextId before);

    Database &m_from;
    Database &m_to;
    StoredTexts m_nameTable;
    AnswerTable m_answers;
    SessionTable m_sessions;
    RolloutTable m_rollouts;
    std::unordered_map<std::int64_t, std::string> m_texts; // by their numbers before
};

void Salvaging::run()
{
    readTexts();
    copyFiles();
    // Once they were kept by file, and sealed to that.
    const bool isByFile = hasColumn(m_from, "answer", "file");
    Remains(m_from, "answer",
        isByFile ? "message, request, file, told" : "message, request, rules, told")
        .visit([&](const Statement &row) { takeAnswer(row, isByFile); });
    Remains(m_from, "session_part", "session, file, told").visit([this](const Statement &row) {
        takeSession(row);
    });
    Remains(m_from, rolloutTable).visit([this](const Statement &row) { takeRollout(row); });
    copySummaries();
    copyThreads(threadNameTable);
    copyThreads(threadTitleTable);
    standInForFiles();
    m_nameTable.save();
}

void Salvaging::readTexts()
{
    Remains(m_from, textTable).visit([this](const Statement &row) {
        m_texts.try_emplace(row.number(0), row.bytes(1));
    });
}

void Salvaging::copyFiles()
{
    Statement insertion(m_to,
        "INSERT OR IGNORE INTO file (id, provider, path, device, inode, size, modified, place,"
        " guard, again, gone, skips, rules, seal)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, 0)"); // no rules: to be read again
    constexpr int copied = 12;
    Remains(m_from, "file",
        "id, provider, path, device, inode, size, modified, place, guard, again, gone, skips")
        .visit([&](const Statement &row) {
            insertion.bindRow(row, copied);
            insertion.run();
        });
}

void Salvaging::copySummaries()
{
    Statement insertion(m_to, replacementIn(summaryTable));
    Remains(m_from, summaryTable).visit([&](const Statement &row) {
        insertion.bindRow(row, 3);
        insertion.run();
    });
}

/// Few and keyed by texts: from both ends is enough.
void Salvaging::copyThreads(const SealedTable &table)
{
    Statement insertion(m_to, replacementIn(table));
    const bool hasSeal = hasColumn(m_from, table.name, "seal");
    for (const char *direction : {"ASC", "DESC"}) {
        m_from.goOn();
        Statement rows(m_from,
            fmt::format("SELECT {} FROM {} WHERE {} ORDER BY thread {}", table.columns, table.name,
                hasSeal ? isSealed(table) : "true", direction));
        while (rows.next()) {
            insertion.bindRow(rows, 2);
            insertion.run();
        }
    }
}

/// What stands between the key and what is told is a file, or else the rules.
void Salvaging::takeAnswer(const Statement &row, bool isByFile)
{
    constexpr std::int64_t rulesThen = 1;
    const AnswerKey key {row.bits(0), row.bits(1)};
    auto record = unpackAnswer(row.bytes(3), AnswerTable::seal(key, row.number(2)));
    if (!record) {
        return;
    }
    // What bears a stand-in is replaced by whatever can be read again.
    const bool isNamed = isKnown(record->session.text) && isKnown(record->model.text);
    const std::int64_t rules = isByFile ? rulesThen : row.number(2);
    record->session.text = numberOf(record->session.text);
    record->model.text = numberOf(record->model.text);
    const FileAnswer answer {key, *record};
    m_answers.put({&answer, 1}, isNamed ? rules : 0);
}

void Salvaging::takeSession(const Statement &row)
{
    const auto session = static_cast<TextId>(row.number(0));
    const std::int64_t file = row.number(1);
    if (auto facts = unpackSessionFacts(row.bytes(2), SessionTable::seal(file, session))) {
        m_sessions.append(file, numberOf(session), std::move(*facts));
    }
}

void Salvaging::takeRollout(const Statement &row)
{
    if (const auto rollout = unpackedRollout(row.bytes(1))) {
        m_rollouts.put(row.number(0), *rollout);
    }
}

/// Numbers of files that were lost must not be given to others.
void Salvaging::standInForFiles()
{
    m_to.run("DELETE FROM file WHERE provider NOT IN (0, 1)");
    m_to.run("INSERT OR IGNORE INTO file (id, provider, path, device, inode, size, modified, place,"
             " guard, again, gone, rules, skips, seal)"
             " SELECT file, provider, CAST('lost-' || file AS BLOB),"
             " 0, 0, 0, 0, 0, 0, 0, 1, 0, x'', 0"
             " FROM (SELECT file, 0 AS provider FROM session_part"
             " UNION SELECT file, 1 FROM rollout)");
    m_to.run(resealing(fileTable, "true"));
}

/// A text that was lost gets a stand-in, so that what belongs together stays together.
TextId Salvaging::numberOf(TextId before)
{
    if (before == 0) {
        return 0;
    }
    return m_nameTable.names().add(
        isKnown(before) ? m_texts.at(before) : fmt::format("lost-{}", before));
}

} // namespace

std::optional<std::string> salvage(const std::filesystem::path &damaged, Database &history)
{
    Database from(damaged);
    // Has SQLite look into files that are shorter than they say.
    from.run("PRAGMA writable_schema = ON");
    Salvaging(from, history).run();
    from.goOn();
    return from.problem();
}

} // namespace usage
