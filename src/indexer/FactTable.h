#pragma once

#include "indexer/Database.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace indexer {

/// When the last run was that found something new, in milliseconds since 1970.
constexpr std::string_view lastChangeFact = "last change";

/// What tells that the files for others are as the history is; emptied with each of its changes.
constexpr std::string_view writtenFact = "written";

/// Single facts that the history keeps by name.
class FactTable final {
public:
    explicit FactTable(Database &database)
        : m_database(database)
    {
    }

    /// 0 for what was never told.
    [[nodiscard]] std::int64_t number(std::string_view name) const;
    /// Empty likewise.
    [[nodiscard]] std::string text(std::string_view name) const;

    void set(std::string_view name, std::int64_t value);
    void set(std::string_view name, std::string_view value);

private:
    Database &m_database;
};

} // namespace indexer
