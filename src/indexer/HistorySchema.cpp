#include "indexer/HistorySchema.h"

#include <array>
#include <fmt/format.h>

namespace indexer {

namespace {

/// Each step makes the next version of the one before. What was released is never changed here:
/// whoever has it gets there by another step.
constexpr std::array steps {
    R"(
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
)",
    R"(
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
)"};

/// So many tables and indexes the newest version has.
constexpr std::int64_t parts = 14;

} // namespace

std::optional<std::string> bringSchemaUpToDate(Database &database)
{
    const std::int64_t version = database.number("PRAGMA user_version");
    const auto newest = static_cast<std::int64_t>(steps.size());
    if (version > newest) {
        return "it was made by a newer version of this program";
    }
    const bool isNew = version == 0 && database.number("SELECT count(*) FROM sqlite_master") == 0;
    if (version <= 0 && !isNew) {
        database.setDamaged();
    }
    for (std::int64_t step = version; step < newest && !database.problem(); ++step) {
        Transaction transaction(database);
        database.run(steps.at(static_cast<std::size_t>(step)));
        database.run(fmt::format("PRAGMA user_version = {}", step + 1));
        transaction.commit();
    }
    if (database.number("SELECT count(*) FROM sqlite_master") != parts) {
        database.setDamaged();
    }
    return database.problem();
}

} // namespace indexer
