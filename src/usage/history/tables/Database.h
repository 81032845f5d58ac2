#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace usage {

/// One connection to an SQLite database. What goes wrong is kept, and from then on everything does
/// nothing, so that it is enough to look at the end. Statements know `seal(value, …)`, a hash.
class Database final {
public:
    /// Opens or creates a file for the user alone; without a name, a database in memory.
    explicit Database(const std::filesystem::path &file);
    /// Opens a file that is there, without changing anything.
    struct ForReading { };
    Database(const std::filesystem::path &file, ForReading forReading);
    /// Opens another program's: without leaving anything beside it, and without waiting for
    /// anybody.
    struct Foreign { };
    Database(const std::filesystem::path &file, Foreign foreign);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// What went wrong first, if anything.
    [[nodiscard]] const std::optional<std::string> &problem() const { return m_problem; }
    /// Whether that is that the file holds no sound database.
    [[nodiscard]] bool isDamaged() const { return m_isDamaged; }
    /// Has a database whose content makes no sense be treated as such.
    void setDamaged();
    /// Forgets that it met damage, to look at what else can be read.
    void goOn();

    /// How many rows the last statement that changes any changed.
    [[nodiscard]] std::int64_t changes() const;

    /// Becomes what another database is, to the last commit.
    void copyFrom(Database &other);

    void run(const std::string &sql);
    /// The first column of the first row, 0 when there is none.
    [[nodiscard]] std::int64_t number(const std::string &sql);

private:
    friend class Statement;
    friend class Transaction;

    void open(const std::filesystem::path &file, int flags);
    [[nodiscard]] bool check(int code);

    sqlite3 *m_connection = nullptr;
    std::optional<std::string> m_problem;
    bool m_isDamaged = false;
};

/// A prepared statement, to be used any number of times. Texts and bytes that are bound have to
/// live until the statement is run; those of a row live until the next one.
class Statement final {
public:
    Statement(Database &database, std::string_view sql);
    ~Statement();
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    /// Binds values to the parameters from the first on.
    template <typename... Values> Statement &bind(Values... values)
    {
        int place = 0;
        (put(++place, values), ...);
        return *this;
    }
    /// Binds the columns of another statement's row, whatever their types.
    void bindRow(const Statement &row, int columns);
    /// Goes to the next row; false when there is none, and then it can be bound anew.
    [[nodiscard]] bool next();
    /// Runs a statement that gives no rows.
    void run();

    [[nodiscard]] std::int64_t number(int column) const;
    [[nodiscard]] std::uint64_t bits(int column) const
    {
        return static_cast<std::uint64_t>(number(column));
    }
    [[nodiscard]] std::string_view bytes(int column) const;

private:
    template <typename Integer>
    requires std::is_integral_v<Integer>
    void put(int place, Integer value) { putNumber(place, static_cast<std::int64_t>(value)); }
    void put(int place, std::string_view bytes);
    void putNumber(int place, std::int64_t value);

    Database &m_database;
    sqlite3_stmt *m_statement = nullptr;
};

/// Changes that are made all together or, unless they are committed, not at all.
class Transaction final {
public:
    explicit Transaction(Database &database);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    void commit();

private:
    Database &m_database;
    bool m_isOpen = true;
};

} // namespace usage
