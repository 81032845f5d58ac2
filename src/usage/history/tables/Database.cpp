#include "usage/history/tables/Database.h"

#include "usage/values/HashOf.h"
#include "usage/values/Packed.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace usage {

namespace {

constexpr mode_t forTheUserAlone = 0600;
constexpr int longestWait = 10'000; // milliseconds, for others to be done

/// Whether it is the file that is at fault. Our statements and what they bind are always the same,
/// so that one that makes no sense to SQLite, or breaks a rule of the schema, met a file whose
/// schema or content is not what we wrote; and a file that was opened for writing but cannot be
/// written says so of itself.
bool tellsOfDamage(int code)
{
    switch (code & 0xFF) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_ERROR:
    case SQLITE_SCHEMA:
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
    case SQLITE_FORMAT:
    case SQLITE_TOOBIG:
        return true;
    default:
        return code == SQLITE_READONLY;
    }
}

/// What went wrong in words: where the system failed, its own.
std::string words(sqlite3 *connection, int code)
{
    const int last = errno; // which SQLite does not always pass on
    const int told = connection == nullptr ? 0 : sqlite3_system_errno(connection);
    const int error = told != 0 ? told : last;
    const bool isOfTheSystem = (code & 0xFF) == SQLITE_IOERR || (code & 0xFF) == SQLITE_CANTOPEN;
    if (isOfTheSystem && error != 0) {
        return std::strerror(error);
    }
    return connection == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(connection);
}

/// Whether a file is in a folder that nothing can be written into, and has no journal. SQLite would
/// want to make one.
bool isFrozen(const std::filesystem::path &file)
{
    struct stat journal { };
    const bool hasJournal =
        ::stat((file.native() + "-wal").c_str(), &journal) == 0 && journal.st_size > 0;
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    return !hasJournal && ::access(folder.c_str(), W_OK) != 0;
}

/// Has SQLite take a file for one that never changes.
constexpr std::string_view neverChanging = "immutable=1";

/// A file's name with what SQLite is to know about it.
std::string nameWith(std::string_view parameters, const std::filesystem::path &file)
{
    std::string name = "file:";
    for (const char c : file.native()) {
        // What has a meaning in such a name.
        const bool isPlain = std::string_view("%?#").find(c) == std::string_view::npos;
        name += isPlain ? std::string(1, c) : fmt::format("%{:02X}", c);
    }
    return fmt::format("{}?{}", name, parameters);
}

/// Takes a file from others that may be there. By its name: to close it would give up SQLite's
/// locks.
void tighten(const std::string &file)
{
    struct stat status { };
    if (::lstat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
        ::chmod(file.c_str(), forTheUserAlone);
    }
}

/// SQL's `seal(column, …)`: a hash of a row's columns.
void seal(sqlite3_context *context, int count, sqlite3_value **values)
{
    std::uint64_t hash = 0;
    for (int i = 0; i < count; ++i) {
        sqlite3_value *const value = values[i];
        if (sqlite3_value_type(value) == SQLITE_INTEGER) {
            hash = sealPlace({hash, static_cast<std::uint64_t>(sqlite3_value_int64(value))});
        } else if (const void *bytes = sqlite3_value_blob(value)) {
            const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
            hash = sealPlace({hash, hashOf({static_cast<const char *>(bytes), size})});
        } else {
            hash = sealPlace({hash, 0});
        }
    }
    sqlite3_result_int64(context, static_cast<std::int64_t>(hash));
}

} // namespace

Database::Database(const std::filesystem::path &file)
{
    if (!file.empty()) {
        // Made here, because SQLite would let everyone read what it makes.
        const int made = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, forTheUserAlone);
        if (made < 0) {
            m_problem = std::strerror(errno);
            return;
        }
        ::fchmod(made, forTheUserAlone); // also what came back from a backup
        ::close(made);
        tighten(file.native() + "-wal");
        tighten(file.native() + "-shm");
    }
    open(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

Database::Database(const std::filesystem::path &file, ForReading /*unused*/)
{
    const bool isImmutable = isFrozen(file);
    open(isImmutable ? nameWith(neverChanging, file) : file.native(),
        SQLITE_OPEN_READONLY | (isImmutable ? SQLITE_OPEN_URI : 0));
}

Database::Database(const std::filesystem::path &file, Foreign /*unused*/)
{
    constexpr int longestValue = 16 << 20; // bytes
    std::error_code error;
    const bool hasJournal = std::filesystem::exists(file.native() + "-wal", error)
        || std::filesystem::exists(file.native() + "-journal", error);
    // Without a journal nobody has it open, and even its locks can be left alone. Beside a journal,
    // its index is only read: if there is none, SQLite would make one that stays.
    const std::string_view way = hasJournal ? "mode=ro&readonly_shm=1" : neverChanging;
    open(nameWith(way, file), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    if (m_connection != nullptr) {
        sqlite3_busy_timeout(m_connection, 0);
        sqlite3_limit(m_connection, SQLITE_LIMIT_LENGTH, longestValue);
    }
}

void Database::open(const std::filesystem::path &file, int flags)
{
    const std::string name = file.empty() ? ":memory:" : file.native();
    const int code =
        sqlite3_open_v2(name.c_str(), &m_connection, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (m_connection != nullptr) {
        sqlite3_busy_timeout(m_connection, longestWait);
        sqlite3_extended_result_codes(m_connection, 1);
        // What was written last stays in its journal until that is full: emptying the journal each
        // time would have us wait for the disk each time.
        sqlite3_db_config(m_connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        sqlite3_create_function(m_connection, "seal", -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
            nullptr, seal, nullptr, nullptr);
    }
    static_cast<void>(check(code));
}

Database::~Database()
{
    sqlite3_close(m_connection);
}

bool Database::check(int code)
{
    if (code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW) {
        return true;
    }
    if (!m_problem) {
        m_problem = words(m_connection, code);
        m_isDamaged = tellsOfDamage(code);
    }
    return false;
}

void Database::setDamaged()
{
    if (!m_problem) {
        m_problem = "it is damaged";
        m_isDamaged = true;
    }
}

void Database::goOn()
{
    if (m_isDamaged) {
        m_problem.reset();
        m_isDamaged = false;
    }
}

std::int64_t Database::changes() const
{
    return m_connection == nullptr ? 0 : sqlite3_changes64(m_connection);
}

void Database::copyFrom(Database &other)
{
    if (m_problem || other.m_problem) {
        return;
    }
    sqlite3_backup *const backup =
        sqlite3_backup_init(m_connection, "main", other.m_connection, "main");
    if (backup != nullptr) {
        sqlite3_backup_step(backup, -1);
        sqlite3_backup_finish(backup);
    }
    static_cast<void>(check(sqlite3_extended_errcode(m_connection)));
}

void Database::run(const std::string &sql)
{
    if (!m_problem) {
        static_cast<void>(
            check(sqlite3_exec(m_connection, sql.c_str(), nullptr, nullptr, nullptr)));
    }
}

std::int64_t Database::number(const std::string &sql)
{
    Statement statement(*this, sql);
    return statement.next() ? statement.number(0) : 0;
}

Statement::Statement(Database &database, std::string_view sql)
    : m_database(database)
{
    if (!m_database.m_problem) {
        static_cast<void>(m_database.check(sqlite3_prepare_v3(m_database.m_connection, sql.data(),
            static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr)));
    }
}

Statement::~Statement()
{
    sqlite3_finalize(m_statement);
}

void Statement::bindRow(const Statement &row, int columns)
{
    for (int i = 0; i < columns && m_statement != nullptr && row.m_statement != nullptr; ++i) {
        static_cast<void>(m_database.check(
            sqlite3_bind_value(m_statement, i + 1, sqlite3_column_value(row.m_statement, i))));
    }
}

bool Statement::next()
{
    if (m_statement == nullptr || m_database.m_problem) {
        return false;
    }
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW) {
        return true;
    }
    static_cast<void>(m_database.check(code));
    sqlite3_reset(m_statement);
    return false;
}

void Statement::run()
{
    while (next()) { }
}

std::int64_t Statement::number(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

std::string_view Statement::bytes(int column) const
{
    const void *bytes = sqlite3_column_blob(m_statement, column);
    const int size = sqlite3_column_bytes(m_statement, column);
    return bytes == nullptr
        ? std::string_view {}
        : std::string_view(static_cast<const char *>(bytes), static_cast<std::size_t>(size));
}

void Statement::put(int place, std::string_view bytes)
{
    if (m_statement != nullptr) {
        static_cast<void>(m_database.check(sqlite3_bind_blob64(
            m_statement, place, bytes.empty() ? "" : bytes.data(), bytes.size(), SQLITE_STATIC)));
    }
}

void Statement::putNumber(int place, std::int64_t value)
{
    if (m_statement != nullptr) {
        static_cast<void>(m_database.check(sqlite3_bind_int64(m_statement, place, value)));
    }
}

Transaction::Transaction(Database &database)
    : m_database(database)
{
    m_database.run("BEGIN IMMEDIATE");
}

Transaction::~Transaction()
{
    if (m_isOpen && m_database.m_connection != nullptr) {
        // Also after a failure, which the database itself may have rolled back already.
        sqlite3_exec(m_database.m_connection, "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void Transaction::commit()
{
    m_database.run("COMMIT");
    m_isOpen = m_database.problem().has_value();
}

} // namespace usage
