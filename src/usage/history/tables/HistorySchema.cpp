#include "usage/history/tables/HistorySchema.h"

#include "usage/history/tables/AnswerFolding.h"
#include "usage/history/tables/NoteTable.h"

#include <array>
#include <fmt/format.h>

namespace usage {

namespace {

struct Step {
    const char *sql = nullptr;
    void (*between)(Database &) = nullptr; // what SQL cannot do
    const char *last = "";
};

/// Each step makes the next version of the one before. What was released is never changed here:
/// whoever has it gets there by another step.
constexpr std::array<Step, 3> steps {{
    {R"(
-- Every text that rows below name by its number: sessions and models.
CREATE TABLE text (id INTEGER PRIMARY KEY, text BLOB NOT NULL);

-- Each file that ever told something, and how far it was read.
CREATE TABLE file (
    id INTEGER PRIMARY KEY,
    provider INTEGER NOT NULL,
    path BLOB NOT NULL,
    device INTEGER NOT NULL,
    inode INTEGER NOT NULL,
    size INTEGER NOT NULL,
    modified INTEGER NOT NULL,           -- nanoseconds since 1970
    place INTEGER NOT NULL,              -- bytes that were read, up to the end of a line
    guard INTEGER NOT NULL,              -- hash of the bytes in front of that place
    again INTEGER NOT NULL,              -- milliseconds since 1970 when it is to be read anew, or 0
    gone INTEGER NOT NULL,               -- whether it was no longer there
    rules INTEGER NOT NULL,              -- by which it was read
    skips BLOB NOT NULL);                -- what was left out of it

-- What each of Claude Code's files tells of each answer. The truth that all sums are made of.
CREATE TABLE answer (
    message INTEGER NOT NULL,            -- hashes of the answer's ids
    request INTEGER NOT NULL,
    file INTEGER NOT NULL,
    told BLOB NOT NULL,
    PRIMARY KEY (message, request, file)) WITHOUT ROWID;

-- And of each session.
CREATE TABLE session_part (
    session INTEGER NOT NULL,
    file INTEGER NOT NULL,
    told BLOB NOT NULL,
    PRIMARY KEY (session, file)) WITHOUT ROWID;
CREATE INDEX session_part_of_file ON session_part (file);
CREATE TABLE summary (
    leaf INTEGER NOT NULL,               -- hash of the id of the line that it belongs to
    file INTEGER NOT NULL,
    title BLOB NOT NULL,
    PRIMARY KEY (leaf, file)) WITHOUT ROWID;

-- What each of Codex's files tells, and the threads that it has to do with.
CREATE TABLE rollout (file INTEGER PRIMARY KEY, told BLOB NOT NULL);
CREATE TABLE kin (
    thread BLOB NOT NULL,
    file INTEGER NOT NULL,
    PRIMARY KEY (thread, file)) WITHOUT ROWID;
CREATE INDEX kin_of_file ON kin (file);
CREATE TABLE thread_name (thread BLOB PRIMARY KEY, name BLOB NOT NULL) WITHOUT ROWID;

-- Made of the above by the prices and the time zone that the facts name, and made anew when these
-- change.
CREATE TABLE spent (
    provider INTEGER NOT NULL,
    session INTEGER NOT NULL,
    day INTEGER NOT NULL,                -- the local day, counted from 1970
    model INTEGER NOT NULL,
    answers INTEGER NOT NULL,
    used INTEGER NOT NULL,               -- of these, those that used anything
    unpriced INTEGER NOT NULL,           -- of these, those without a known price
    estimated INTEGER NOT NULL,
    input INTEGER NOT NULL,
    output INTEGER NOT NULL,
    cache_write INTEGER NOT NULL,
    cache_read INTEGER NOT NULL,
    dollars INTEGER NOT NULL,
    picodollars INTEGER NOT NULL,
    PRIMARY KEY (provider, session, day, model)) WITHOUT ROWID;
CREATE TABLE session (
    provider INTEGER NOT NULL,
    session INTEGER NOT NULL,
    title BLOB NOT NULL,
    folder BLOB NOT NULL,
    end INTEGER NOT NULL,                -- milliseconds since 1970
    PRIMARY KEY (provider, session)) WITHOUT ROWID;

CREATE TABLE fact (name TEXT PRIMARY KEY, value BLOB NOT NULL) WITHOUT ROWID;
)"},
    {R"(
-- The sums in one text, sealed to their place.
DROP TABLE spent;
CREATE TABLE spent (
    provider INTEGER NOT NULL,
    session INTEGER NOT NULL,
    day INTEGER NOT NULL,                -- the local day, counted from 1970
    model INTEGER NOT NULL,
    told BLOB NOT NULL,
    PRIMARY KEY (provider, session, day, model)) WITHOUT ROWID;
UPDATE fact SET value = CAST('outdated' AS BLOB) WHERE name = 'sums';

-- What a thread is called by its file goes behind a title of Codex's own, unless that is the prompt.
ALTER TABLE session ADD COLUMN prompt BLOB NOT NULL DEFAULT x'';
CREATE TABLE thread_title (thread BLOB PRIMARY KEY, title BLOB NOT NULL) WITHOUT ROWID;
)"},
    {R"(
-- Every row ends with a hash of its other columns, if what it holds has none.
ALTER TABLE text ADD COLUMN seal INTEGER NOT NULL DEFAULT 0;
UPDATE text SET seal = seal(id, text);
ALTER TABLE file ADD COLUMN seal INTEGER NOT NULL DEFAULT 0;
UPDATE file SET seal = seal(id, provider, path, device, inode, size, modified, place, guard, again,
    gone, rules, skips);
ALTER TABLE summary ADD COLUMN seal INTEGER NOT NULL DEFAULT 0;
UPDATE summary SET seal = seal(leaf, file, title);
ALTER TABLE rollout ADD COLUMN seal INTEGER NOT NULL DEFAULT 0;
UPDATE rollout SET seal = seal(file, told);
ALTER TABLE kin ADD COLUMN seal INTEGER NOT NULL DEFAULT 0;
UPDATE kin SET seal = seal(thread, file);
ALTER TABLE thread_name ADD COLUMN seal INTEGER NOT NULL DEFAULT 0;
UPDATE thread_name SET seal = seal(thread, name);
ALTER TABLE thread_title ADD COLUMN seal INTEGER NOT NULL DEFAULT 0;
UPDATE thread_title SET seal = seal(thread, title);
ALTER TABLE fact ADD COLUMN seal INTEGER NOT NULL DEFAULT 0;
DELETE FROM fact WHERE name = 'sums';
UPDATE fact SET seal = seal(name, value);

-- What all files together tell of each answer.
ALTER TABLE answer RENAME TO answer_by_file;
CREATE TABLE answer (
    message INTEGER NOT NULL,            -- hashes of the answer's ids
    request INTEGER NOT NULL,
    rules INTEGER NOT NULL,              -- by which its lines were read
    told BLOB NOT NULL,
    PRIMARY KEY (message, request)) WITHOUT ROWID;
DROP INDEX session_part_of_file;

DROP TABLE session;
CREATE TABLE session (
    provider INTEGER NOT NULL,
    session INTEGER NOT NULL,
    title BLOB NOT NULL,
    folder BLOB NOT NULL,
    end INTEGER NOT NULL,                -- milliseconds since 1970
    prompt BLOB NOT NULL,
    seal INTEGER NOT NULL,
    PRIMARY KEY (provider, session)) WITHOUT ROWID;
)",
        foldAnswers, "DROP TABLE answer_by_file"},
}};

constexpr auto newest = static_cast<std::int64_t>(steps.size());
/// So many tables and indexes that one has.
constexpr std::int64_t parts = 13;

/// Kept beside the number in the file's head, which nothing protects.
constexpr std::string_view versionFact = "version";

constexpr const char *tooNew = "it was made by a newer version of this program";

void take(Database &database, std::int64_t version)
{
    const Step &step = steps.at(static_cast<std::size_t>(version));
    Transaction transaction(database);
    database.run(step.sql);
    if (step.between != nullptr) {
        step.between(database);
    }
    database.run(step.last);
    database.run(fmt::format("PRAGMA user_version = {}", version + 1));
    if (version + 1 == newest) {
        NoteTable(database).set(versionFact, newest);
    }
    transaction.commit();
}

/// Where the number in the head is not the one beside the facts, it is the head that is damaged.
bool isOfNewerVersion(Database &database)
{
    if (database.number("PRAGMA user_version") <= newest) {
        return false;
    }
    const bool isNewest = NoteTable(database).number(versionFact) == newest;
    const bool isReadable = !database.isDamaged();
    database.goOn(); // who knows how a newer version keeps its facts
    return !isNewest || !isReadable;
}

bool hasAllParts(Database &database)
{
    return database.number("SELECT count(*) FROM sqlite_master") == parts;
}

} // namespace

std::optional<std::string> bringSchemaUpToDate(Database &database)
{
    const std::int64_t version = database.number("PRAGMA user_version");
    if (isOfNewerVersion(database)) {
        return tooNew;
    }
    const bool isNew = version == 0 && database.number("SELECT count(*) FROM sqlite_master") == 0;
    if ((version <= 0 && !isNew) || version > newest) {
        database.setDamaged();
    }
    for (std::int64_t step = version; step < newest && !database.problem(); ++step) {
        take(database, step);
    }
    if (!hasAllParts(database)) {
        database.setDamaged();
    }
    return database.problem();
}

bool isSchemaUpToDate(Database &database)
{
    return database.number("PRAGMA user_version") == newest;
}

std::string schemaProblem(Database &database)
{
    if (isOfNewerVersion(database)) {
        return tooNew;
    }
    const std::int64_t version = database.number("PRAGMA user_version");
    const bool isWhole =
        version == newest ? hasAllParts(database) : version > 0 && version < newest;
    return isWhole ? std::string() : "it does not have the tables of a history";
}

} // namespace usage
